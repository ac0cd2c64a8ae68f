// tests/platform/format_corpus_test.cpp
//
// The format corpus: every line of tests/platform/format_corpus.tsv (Format in both widths, the
// number appends, the number tests and the label order) must give its text, on every platform.
#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "tests/support/format_case.h"

namespace zt::test {

// The table, compiled in so that the test needs no file at run time (under Wine neither).
std::vector<FormatCase> FormatCorpus() {
  static const char kTable[] =
#include "format_corpus.inc"
      ;
  std::istringstream in(kTable);
  return ReadCases(in);
}

namespace {

TEST(FormatCorpus, EveryCaseGivesItsText) {
  const std::vector<FormatCase> cases = FormatCorpus();
  EXPECT_GE(cases.size(), 500U);
  for (const FormatCase& c : cases) {
    EXPECT_EQ(RunCase(c), c.expected) << "line " << c.line << ": " << c.Key();
  }
}

}  // namespace
}  // namespace zt::test
