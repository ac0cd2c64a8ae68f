// tests/containers/list_quene_test.cpp
//
// ZtListQuene and ZtPDListQuene: first-in first-out order, the size limit, and who owns a queued
// object.
#include "zt/containers/list_quene.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "tests/support/tracked.h"

namespace zt::test {
namespace {

TEST(ListQuene, PopsInPushOrderUpToItsLimitAndPushesAllOrNothing) {
  ZtListQuene<ZtLong> q(3);
  ZtLong out = 42;
  EXPECT_FALSE(q.GetHead(out) || q.GetTail(out) || q.Pop(out));
  EXPECT_EQ(out, 42);  // untouched when empty
  for (ZtLong v : {1, 2, 3}) EXPECT_TRUE(q.Push(v));
  EXPECT_FALSE(q.Push(4));
  EXPECT_TRUE(q.GetTail(out) && out == 3);
  EXPECT_EQ(q[1], 2);
  for (ZtLong expected : {1, 2}) {
    EXPECT_TRUE(q.GetHead(out) && out == expected);
    EXPECT_TRUE(q.Pop(out) && out == expected);
  }
  EXPECT_TRUE(q.Push(5));  // a pop made room
  EXPECT_EQ(Items(q), (std::vector<ZtLong>{3, 5}));
  auto state = [](ZtListQuene<ZtLong>& x) { return Items(x); };
  ExpectStrongGuarantee(
      q, [](auto& x) { x.Push(7); }, state);
  q.SetLimit(0);
  EXPECT_FALSE(q.Push(6));
  q.Clear();
  EXPECT_EQ(Both(q.GetCount(), q.GetLimit()), Both(0, 0));
}

TEST(PDListQuene, OwnsWhatIsQueuedAndHandsPoppedObjectsOver) {
  const long live = Tracked::Live();
  Tracked* popped = nullptr;
  {
    ZtPDListQuene<Tracked> q(3);
    for (int v : {1, 2, 3}) EXPECT_TRUE(q.Push(new Tracked(v)));
    ZtPDListQuene<Tracked> full(0);
    Tracked refused(4);
    EXPECT_FALSE(full.Push(&refused));  // refused: the caller keeps it
    EXPECT_TRUE(q.Pop(popped) && popped->value() == 1);
    Tracked* tail = nullptr;
    EXPECT_TRUE(q.GetTail(tail) && tail->value() == 3 && q.GetCount() == 2);
    q.Clear();
    EXPECT_EQ(Tracked::Live(), live + 2);  // the popped one and the refused one
    EXPECT_TRUE(q.Push(new Tracked(5)) && q.Push(new Tracked(6)));
  }                                      // the destructor deletes both
  EXPECT_EQ(Tracked::Live(), live + 1);  // the popped one, still the caller's
  delete popped;
}

}  // namespace
}  // namespace zt::test
