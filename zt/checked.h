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
// The kinds of report, by subject:
//   cursor         a cursor that names no element (GetCurData, SetCurData, DelCur, InsertCur,
//                  ReleaseCur)
//   index          an index or position that names nothing (GetAt, operator[], Del, Insert,
//                  Exchange, Move, Reverse, Rotate, a negative `from` to the searches, BFindTo,
//                  the graph's positional calls, CheckArc, CheckNode, GetBaseClassInfo)
//   length         a negative length (constructors, ReAllocate, SetLength, Attach), a parent
//                  without genes, an empty population asked to mutate
//   count          more elements than the source holds, or a negative count (Left, Right,
//                  DelLeft, DelRight)
//   range          a range that runs backwards (Mid, the strings' Del(from, to)); value `from`
//   position       a typed stream read that runs past the end; value the position it starts at
//   unit size      a bit array unit other than 1, 2 or 4 bits, a block stream unit below 1
//   group size     a grouped list's group size below 1
//   bit, value     a bit past a bit array's bits, a value wider than its unit
//   empty place    an owning container's object asked for where the element is null
//   ... pointer    a null pointer where none is allowed (value 0): a graph's node or arc, a
//                  class name, an event name or reactor, a label, a child that New did not make;
//                  `null end` is an arc end given to ZtGraph::Create (value the end, 0 or 1)
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
  const char* class_name;  ///< the class, e.g. "ZtDynArray"; "" for a free function
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
///
/// ZT_REPORT_UNLESS(cond, op, cls, subject, value): the same check where the library does not
/// test the condition itself (it clamps, or the call goes on regardless). The ordinary build does
/// not evaluate `cond` at all.
#if defined(ZT_CHECKED) && ZT_CHECKED
#define ZT_IN_CONTRACT(cond, op, cls, subject, value)                                              \
  ((cond) ? true                                                                                   \
          : (::zt::ReportContractViolation((op), (cls), (subject), static_cast<long long>(value)), \
             false))
#define ZT_REPORT_UNLESS(cond, op, cls, subject, value) \
  static_cast<void>(ZT_IN_CONTRACT(cond, op, cls, subject, value))
#else
#define ZT_IN_CONTRACT(cond, op, cls, subject, value) (cond)
#define ZT_REPORT_UNLESS(cond, op, cls, subject, value) static_cast<void>(0)
#endif

#endif  // ZT_CHECKED_H_
