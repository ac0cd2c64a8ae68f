// tests/checked_test.cpp
//
// Each kind of call outside a contract: reported with its operation, class and value by the
// checked build (the default handler prints it and aborts), ignored by the ordinary build.
#include <gtest/gtest.h>

#include <functional>

#include "tests/support/contract_reports.h"
#include "zt/zt.h"

namespace {

struct Case {
  const char* kind;
  std::function<void()> call;
  const char* report;  // a regular expression for the default handler's line
};

std::vector<Case> Cases() {
  return {
      {"cursor out",
       [] {
         ZtDynArray<int> a;
         a.DelCur();
       },
       "ZtDynArray::DelCur: cursor -1 "},
  };
}

TEST(CheckedBuild, EveryKindOfCallOutsideTheContractReportsItself) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  for (const Case& c : Cases()) {
    SCOPED_TRACE(c.kind);
    const long before = zt::test::ContractReports();
    c.call();
    EXPECT_EQ(zt::test::ContractReports() - before, zt::IsCheckedBuild() ? 1 : 0);
    if (zt::IsCheckedBuild()) {
      EXPECT_DEATH(
          {
            zt::SetContractHandler(nullptr);
            c.call();
          },
          std::string("^zt: ") + c.report + "outside the contract");
    }
  }
}

}  // namespace
