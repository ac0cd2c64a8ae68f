// tests/containers/xlist_test.cpp
//
// ZtXList: after every kind of change the group index holds one entry per group start, each the
// node a walk from the head reaches, and MoveTo(i) lands on the walked-to node for every i.
#include "zt/containers/xlist.h"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"

namespace zt::test {
namespace {

using Probe = IndexProbe<ZtXList<int>>;

TEST(XList, EveryChangeKeepsTheIndexExact) {
  using Step = std::pair<const char*, std::function<void(Probe&, Probe&)>>;
  const std::vector<Step> steps = {
      {"append",
       [](Probe& l, Probe&) {
         for (int v = 0; v < 10; ++v) l.Append(v);
       }},
      {"insert head", [](Probe& l, Probe&) { l.InsertHead(-1); }},
      {"insert middle", [](Probe& l, Probe&) { l.Insert(5, -2); }},
      {"insert cur", [](Probe& l, Probe&) { l.MoveToLast(), l.InsertCur(-3); }},
      {"delete head", [](Probe& l, Probe&) { l.DelHead(); }},
      {"delete middle", [](Probe& l, Probe&) { l.Del(4); }},
      {"delete tail", [](Probe& l, Probe&) { l.DelTail(); }},
      {"conbine",
       [](Probe& l, Probe& o) {
         Fill(o, {7, 7, 7, 7, 7, 7, 7}), l.Conbine(o, 2);
       }},
      {"split", [](Probe& l, Probe& o) { l.SplitAt(8, o); }},
      {"reverse", [](Probe& l, Probe&) { l.ReverseList(); }},
      {"rotate", [](Probe& l, Probe&) { l.Rotate(6, 1); }},
      {"sort", [](Probe& l, Probe&) { l.Sort(true); }},
      {"shrink and grow", [](Probe& l, Probe&) { l.SetLength(5, true), l.IncreaseSize(4); }},
      {"assign", [](Probe& l, Probe& o) { l = o; }},
      {"reset", [](Probe& l, Probe&) { l.Reset(), l.Append(1); }},
  };
  for (ZtLong size : {1, 3, 25}) {
    Probe l(0, size, 0);
    Probe other(0, size == 3 ? 2 : 3);
    for (const Step& step : steps) {
      SCOPED_TRACE(testing::Message() << step.first << ", groups of " << size);
      step.second(l, other);
      ExpectIndexExact(l);
      ExpectIndexExact(other);
      Probe copy(l);
      ExpectIndexExact(copy);
    }
  }
}

TEST(XList, ConbineAndRebuildsLeaveTheCursorOnTheLastGroupStart) {
  Probe l(40);
  Probe o(30);
  l.MoveTo(3);
  l.Conbine(o, 0);
  EXPECT_EQ(l.Index().size(), 3U);
  EXPECT_EQ(l.GetCur(), 50);
  l.MoveTo(3);
  l.Rotate(2, 2);
  EXPECT_EQ(l.GetCur(), 50);
  Probe empty(0, 0);  // group size taken as 1
  empty.ReverseList();
  EXPECT_EQ(empty.GetCur(), -1);
  EXPECT_EQ(empty.GetGroupSize(), 1);
}

TEST(XListFaults, GrowingTheIndexFailsBeforeTheListChanges) {
  Probe l(6, 3, 0);  // no spare index entries: opening a group allocates
  l.MoveTo(2);
  auto state = [](Probe& x) { return std::make_tuple(x.GetCur(), Values(x), x.Index()); };
  ExpectStrongGuarantee(
      l, [](auto& x) { x.InsertCur(9); }, state);
  ExpectIndexExact(l);
  Probe o(5);
  ExpectStrongGuarantee(
      l, [&o](auto& x) { x.Conbine(o, 1); }, state);
  ExpectIndexExact(l);
}

}  // namespace
}  // namespace zt::test
