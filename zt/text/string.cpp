// ZtStringA and ZtStringW: both classes' members are defined by one body, included once for each.
#include "zt/text/string.h"

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <limits>
#include <new>
#include <string>

#include "zt/checked.h"
#include "zt/containers/internal/element_ops.h"
#include "zt/containers/internal/sequence_ops.h"
#include "zt/containers/list_quene.h"
#include "zt/platform/text.h"
#include "zt/text/internal/search.h"
#include "zt/text/internal/string_traits.h"

namespace {

template <class Ch>
using Traits = zt::detail::StringTraits<Ch>;

template <class Ch>
void MoveChars(Ch* dst, const Ch* src, ZtLong n) {
  if (n > 0) std::char_traits<Ch>::move(dst, src, static_cast<std::size_t>(n));
}

// strcmp / wcscmp of the text a[0..n), whose end counts as its terminator, against the
// terminated s (null: the empty text).
template <class Ch>
int CompareHeld(const Ch* a, ZtLong n, const Ch* s) {
  if (s == nullptr) s = Traits<Ch>::kEmpty;
  for (ZtLong i = 0; i < n; ++i) {
    if (a[i] != s[i] || a[i] == 0) {
      return zt::platform::Unit(a[i]) < zt::platform::Unit(s[i]) ? -1 : (a[i] != s[i] ? 1 : 0);
    }
  }
  return s[n] == 0 ? 0 : -1;
}

}  // namespace

// The class's name in the checked build's reports.
#define ZT_DETAIL_QUOTE(x) #x
#define ZT_DETAIL_QUOTE_EXPANDED(x) ZT_DETAIL_QUOTE(x)
#define ZT_STRING_NAME ZT_DETAIL_QUOTE_EXPANDED(ZT_STRING)

#define ZT_STRING ZtStringA
#include "zt/text/internal/string_body.inc"  // NOLINT(bugprone-suspicious-include)
#undef ZT_STRING

#define ZT_STRING ZtStringW
#include "zt/text/internal/string_body.inc"  // NOLINT(bugprone-suspicious-include)
#undef ZT_STRING
