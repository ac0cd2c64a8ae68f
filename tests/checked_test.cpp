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
  // One call per kind of report, spread over the subsystems; each is ignored by the ordinary build.
  return {
      {"cursor out", [] { ZtDynArray<int>().DelCur(); }, "ZtDynArray::DelCur: cursor -1 "},
      {"cursor out of a list", [] { ZtDList<int>().SetCurData(1); },
       "ZtList::SetCurData: cursor -1 "},
      {"invalid index", [] { ZtArray<int>(2).Del(3); }, "ZtArray::Del: index 3 "},
      {"invalid position in a set", [] { static_cast<void>(ZtParallelTasks()[0]); },
       "ZtParallelTasks::operator\\[\\]: index 0 "},
      {"negative length", [] { ZtDynArray<int>().SetLength(-2, true); },
       "ZtDynArray::SetLength: length -2 "},
      {"count beyond the text", [] { ZtStringA("abc").Left(5); }, "ZtStringA::Left: count 5 "},
      {"reversed range", [] { ZtStringW(L"abcd").Del(2, 1); }, "ZtStringW::Del: range 2 "},
      {"typed read past the end",
       [] {
         ZtDynArrayStream s;
         ZtLong v = 0;
         s >> v;
       },
       "ZtStream::ReadLong: position 0 "},
      {"unit size", [] { ZtBitArray(8, 3); }, "ZtBitArray::ZtBitArray: unit size 3 "},
      {"bit past the units", [] { ZtBitArray(3, 1).Set(5); }, "ZtBitArray::Set: bit 5 "},
      {"value wider than its unit", [] { ZtBitArray(4, 2).SetValue(0, 7); },
       "ZtBitArray::SetValue: value 7 "},
      {"group size", [] { ZtXList<int>(0, 0); }, "ZtXList::ZtXList: group size 0 "},
      {"empty place",
       [] {
         ZtDynPArray<int> p;
         p.Append(nullptr);
         static_cast<void>(p.GetPData(0));
       },
       "ZtDynPArray::GetPData: empty place 0 "},
      {"null object", [] { ZtGraph() << static_cast<ZtGraphNode*>(nullptr); },
       "ZtGraph::operator<<: node pointer 0 "},
      {"null name", [] { ZtSendEvent(nullptr, nullptr, 0); }, "::ZtSendEvent: name pointer 0 "},
      {"parent without genes",
       [] {
         GA_Population p;
         GA_Individual().Multiply(GA_Individual(), p);
       },
       "GA_Individual::Multiply: length 0 "},
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
