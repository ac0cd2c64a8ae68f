// Label comparison, written once for narrow and wide labels, and CloneString.
#include "zt/text/label.h"

#include <climits>
#include <string>
#include <type_traits>

#include "zt/checked.h"
#include "zt/platform/text.h"

namespace {

// Reads a label once, front to back: hands out its text part one character at a time and adds
// the digits it passes to the label's number. Narrow labels treat a byte from 0x80 up as a lead
// byte whose trail byte is text whatever it looks like.
template <class Ch>
class LabelReader {
  using Unit = std::make_unsigned_t<Ch>;
  static Unit At(const Ch* p) { return zt::platform::Unit(*p); }
  static constexpr bool kLeadBytes = sizeof(Ch) == 1;

 public:
  explicit LabelReader(const Ch* s) : m_next(s) {}

  // The next character of the text part; 0 once the label is read to its end.
  Unit NextText() {
    if (m_trail) {
      m_trail = false;
      return At(m_next++);
    }
    for (Unit c = At(m_next); c != 0; c = At(m_next)) {
      ++m_next;
      if (c >= '0' && c <= '9') {
        m_number = zt::platform::AppendDigit(m_number, c - '0');
        continue;
      }
      m_trail = kLeadBytes && c >= 0x80 && *m_next != 0;
      return c;
    }
    return 0;
  }
  // The digits read so far as one number, held at INT_MAX.
  long long Number() const { return m_number < INT_MAX ? m_number : INT_MAX; }

 private:
  const Ch* m_next;
  bool m_trail = false;
  long long m_number = 0;
};

// `op` names the public function in the checked build's report of a null label.
template <class Ch>
int CompareLabel(const Ch* a, const Ch* b, [[maybe_unused]] const char* op) {
  ZT_REPORT_UNLESS(a != nullptr && b != nullptr, op, "", "label pointer", 0);
  LabelReader<Ch> x(a);
  LabelReader<Ch> y(b);
  for (;;) {
    const auto p = x.NextText();
    const auto q = y.NextText();
    if (p != q) return p < q ? -1 : 1;
    if (p == 0) break;
  }
  return x.Number() < y.Number() ? -1 : (x.Number() > y.Number() ? 1 : 0);
}

}  // namespace

int CompareLabelA(const char* a, const char* b) { return CompareLabel(a, b, "CompareLabelA"); }

int CompareLabelW(const wchar_t* a, const wchar_t* b) {
  return CompareLabel(a, b, "CompareLabelW");
}

wchar_t* CloneString(const wchar_t* s) {
  if (!ZT_IN_CONTRACT(s != nullptr, "CloneString", "", "text pointer", 0)) return nullptr;
  const std::size_t n = std::char_traits<wchar_t>::length(s) + 1;
  auto* copy = new wchar_t[n];
  std::char_traits<wchar_t>::copy(copy, s, n);
  return copy;
}
