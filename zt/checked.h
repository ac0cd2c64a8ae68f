// zt/checked.h
//
// The checked build. Many calls are outside a class's contract: a cursor that names no element,
// an index past the end, a negative length. The library ignores them (they never touch memory
// outside a container's storage), so a port that relies on one by mistake runs on silently.
// Built with ZT_CHECKED (the CMake option, or the `checked` preset), the library instead reports
// each such call, naming the operation, the class and the offending value, through a handler the
// client may replace. The default handler prints one line to stderr and aborts:
//
//   zt: ZtDynArray::DelCur: cursor -1 outside the contract
//
// A handler that returns lets the call go on as in the ordinary build (the call is then ignored).
// ZT_CHECKED is a public compile definition of the checked library (CMake package and
// pkg-config), so a client's own instantiations of the templates check as well.
//
//   zt::SetContractHandler([](const zt::ContractViolation& v) { throw MyError(v.operation); });
//   a.Del(-1);   // reported by the checked build; ignored by the ordinary one
#ifndef ZT_CHECKED_H_
#define ZT_CHECKED_H_

#include "zt/config.h"

namespace zt {

/// One call outside a contract: `class_name`::`operation` got `subject` == `value`.
struct ContractViolation {
  const char* operation;   ///< the member called, e.g. "DelCur"
  const char* class_name;  ///< the class, e.g. "ZtDynArray"
  const char* subject;     ///< what is out: "cursor", "index", "length", ...
  long long value;         ///< its value
};

using ContractHandler = void (*)(const ContractViolation&);

/// Installs `handler` for every later report and returns the previous one; null restores the
/// default (print to stderr, then abort). Process-wide; set it before threads start.
ZT_API ContractHandler SetContractHandler(ContractHandler handler);

/// Hands one report to the installed handler. Called by the checked build's checks.
ZT_API void ReportContractViolation(const char* operation, const char* class_name,
                                    const char* subject, long long value);

/// True when the library was built with ZT_CHECKED.
ZT_API bool IsCheckedBuild();

}  // namespace zt

/// ZT_IN_CONTRACT(cond, op, cls, subject, value): `cond`, the condition under which a call is
/// within its contract. In the checked build a false `cond` is first reported. Use it where the
/// library already tests the condition to ignore the call:
///   if (!ZT_IN_CONTRACT(IsValidIndex(i), "Del", "ZtDynArray", "index", i)) return;
#if defined(ZT_CHECKED) && ZT_CHECKED
#define ZT_IN_CONTRACT(cond, op, cls, subject, value)                                              \
  ((cond) ? true                                                                                   \
          : (::zt::ReportContractViolation((op), (cls), (subject), static_cast<long long>(value)), \
             false))
#else
#define ZT_IN_CONTRACT(cond, op, cls, subject, value) (cond)
#endif

#endif  // ZT_CHECKED_H_
