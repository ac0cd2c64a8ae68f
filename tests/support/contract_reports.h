// tests/support/contract_reports.h
//
// The suite's contract handler. The tests call members outside their contracts on purpose, to
// check that the library ignores such calls; in the checked build each of them reports itself.
// The test executable therefore installs a handler that records the reports and returns (so the
// call goes on to be ignored, as in the ordinary build). A death test restores the default
// handler inside its statement to see the report that a client's program would get.
#ifndef ZT_TESTS_SUPPORT_CONTRACT_REPORTS_H_
#define ZT_TESTS_SUPPORT_CONTRACT_REPORTS_H_

#include <string>

namespace zt::test {

/// Reports recorded since the program started.
long ContractReports();
/// "Class::Operation: subject value" of the last report, or "" when there was none.
std::string LastContractReport();

}  // namespace zt::test

#endif  // ZT_TESTS_SUPPORT_CONTRACT_REPORTS_H_
