// fuzz/label_fuzz.cpp
//
// CompareLabelA and CompareLabelW against a step-by-step transcription of the label order: each
// label is split into its text (every character that is not '0' to '9'; in a narrow label a byte
// from 0x80 up takes the byte after it along, unexamined) and its digits; the texts compare as
// unsigned code units, and only equal texts let the digits decide, read as one decimal number
// that stops growing at INT_MAX (as the Windows runtime's atoi). The first byte picks narrow or
// wide labels; a 0 byte ends the first label. Also checks that CloneString copies.
#include <climits>
#include <cstring>
#include <type_traits>
#include <vector>

#include "fuzz/driver.h"
#include "zt/text/label.h"

namespace {

// Labels as their code units, unsigned; `lead` marks narrow labels with lead bytes.
template <class U>
int Transcribed(const std::vector<U>& a, const std::vector<U>& b, bool lead) {
  struct Parts {
    std::vector<U> text;
    long long number = 0;
  };
  const auto split = [lead](const std::vector<U>& label) {
    Parts p;
    for (size_t i = 0; i < label.size(); ++i) {
      const U c = label[i];
      if (c >= '0' && c <= '9') {
        p.number = p.number * 10 + (c - '0');
        if (p.number > INT_MAX) p.number = INT_MAX;
        continue;
      }
      p.text.push_back(c);
      if (lead && c >= 0x80 && i + 1 < label.size()) p.text.push_back(label[++i]);
    }
    return p;
  };
  const Parts x = split(a), y = split(b);
  if (x.text != y.text) return x.text < y.text ? -1 : 1;  // a prefix orders first, as in strcmp
  return x.number < y.number ? -1 : (x.number > y.number ? 1 : 0);
}

// Labels from the input: narrow ones byte by byte; wide units from two bytes, some with the top
// bits set where wchar_t has 32 of them.
template <class Ch, class U = std::make_unsigned_t<Ch>>
std::vector<U> Label(zt::fuzz::Input& in) {
  std::vector<U> label;
  while (in.More()) {
    unsigned long u = in.Byte();
    if (sizeof(Ch) > 1 && u >= 0xF0) u = (u - 0xF0) << 12 | in.Byte() << 4 | 0x7;
    if (sizeof(Ch) > 2 && (u & 0xF000) == 0xF000) u |= 0xFFFF0000ul;
    if (u == 0) break;
    label.push_back(static_cast<U>(u));
  }
  return label;
}

template <class Ch>
void Compare(zt::fuzz::Input& in, int (*compare)(const Ch*, const Ch*)) {
  const auto ua = Label<Ch>(in), ub = Label<Ch>(in);
  const int want = Transcribed(ua, ub, sizeof(Ch) == 1);
  std::vector<Ch> a, b;
  for (auto u : ua) a.push_back(static_cast<Ch>(u));
  for (auto u : ub) b.push_back(static_cast<Ch>(u));
  a.push_back(0), b.push_back(0);
  ZT_FUZZ_CHECK(compare(a.data(), b.data()) == want);
  ZT_FUZZ_CHECK(compare(b.data(), a.data()) == -want);
  ZT_FUZZ_CHECK(compare(a.data(), a.data()) == 0);
  if constexpr (std::is_same_v<Ch, wchar_t>) {
    wchar_t* copy = CloneString(a.data());
    ZT_FUZZ_CHECK(std::memcmp(copy, a.data(), a.size() * sizeof(wchar_t)) == 0);
    delete[] copy;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  zt::fuzz::Input in(data, size);
  zt::fuzz::g_op = "CompareLabel";
  if (in.Bool()) {
    Compare<char>(in, CompareLabelA);
  } else {
    Compare<wchar_t>(in, CompareLabelW);
  }
  return 0;
}
