// tests/containers/list_quene_test.cpp
//
// ZtListQuene and ZtPDListQuene: first-in first-out order, the size limit, the hit queue, and
// who owns a queued object.
#include "zt/containers/list_quene.h"

#include <gtest/gtest.h>

#include <memory>
#include <tuple>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "tests/support/tracked.h"
#include "zt/containers/dyn_array.h"

namespace zt::test {
namespace {

TEST(ListQuene, PopsInPushOrderAndLeavesOutUntouchedWhenEmpty) {
  ZtListQuene<ZtLong> q;
  ZtLong out = 42;
  EXPECT_FALSE(q.GetHead(out) || q.GetTail(out) || q.Pop(out));
  EXPECT_EQ(out, 42);
  for (ZtLong v : {1, 2, 3}) EXPECT_TRUE(q.Push(v));
  EXPECT_TRUE(q.GetTail(out));
  EXPECT_EQ(out, 3);
  EXPECT_EQ(q[1], 2);
  for (ZtLong expected : {1, 2, 3}) {
    EXPECT_TRUE(q.GetHead(out) && out == expected);
    EXPECT_TRUE(q.Pop(out) && out == expected);
  }
  EXPECT_FALSE(q.Pop(out));
  EXPECT_EQ(q.GetCount(), 0);
}

TEST(ListQuene, LimitRefusesPushesUntilAPopMakesRoom) {
  ZtListQuene<ZtLong> q(2);
  EXPECT_TRUE(q.Push(1) && q.Push(2));
  EXPECT_FALSE(q.Push(3));
  EXPECT_EQ(q.GetCount(), 2);
  ZtLong out = 0;
  q.Pop(out);
  EXPECT_TRUE(q.Push(4));
  q.SetLimit(0);
  EXPECT_FALSE(q.Push(5));
  q.Clear();
  EXPECT_EQ(q.GetCount(), 0);
  EXPECT_EQ(q.GetLimit(), 0);
}

TEST(ListQuene, CollectsTheHitsOfAFindAllSearchAndPushesAllOrNothing) {
  ZtDynArray<int> a;
  Fill(a, {5, 0, 5, 5});
  ZtListQuene<ZtLong> hits;
  hits.Push(-1);  // an earlier hit still queued is counted
  EXPECT_EQ(a.Find(5, hits, 0, -1), 4);
  EXPECT_EQ(hits[3], 3);
  auto state = [](ZtListQuene<ZtLong>& q) {
    ZtLong head = 0;
    ZtLong tail = 0;
    q.GetHead(head);
    q.GetTail(tail);
    return std::make_tuple(q.GetCount(), head, tail);
  };
  ExpectStrongGuarantee(
      hits, [](auto& q) { q.Push(7); }, state);
}

TEST(PDListQuene, OwnsWhatIsQueuedAndHandsPoppedObjectsOver) {
  const long live = Tracked::Live();
  std::unique_ptr<Tracked> mine;
  {
    ZtPDListQuene<Tracked> q(3);
    for (int v : {1, 2, 3}) EXPECT_TRUE(q.Push(new Tracked(v)));
    const std::unique_ptr<Tracked> refused(new Tracked(4));
    EXPECT_FALSE(q.Push(refused.get()));  // full: the caller keeps it
    Tracked* popped = nullptr;
    EXPECT_TRUE(q.Pop(popped) && popped->value() == 1);
    mine.reset(popped);
    Tracked* tail = nullptr;
    EXPECT_TRUE(q.GetTail(tail) && tail->value() == 3 && q.GetCount() == 2);
    q.Clear();
    EXPECT_EQ(Tracked::Live(), live + 2);  // the popped one and the refused one
    EXPECT_TRUE(q.Push(new Tracked(5)) && q.Push(new Tracked(6)));
  }  // the destructor deletes both
  EXPECT_EQ(Tracked::Live(), live + 1);
  EXPECT_EQ(mine->value(), 1);
}

}  // namespace
}  // namespace zt::test
