// tests/containers/throwing_elements_test.cpp
//
// Elements whose copies throw. Each container operation runs with the 1st, 2nd, 3rd, ... element
// copy (construction or assignment, of the element or of an owned object) throwing, until it
// completes. After every throw the container must be valid (its length counts what its walks
// reach, the back links and the group index agree), hold no element that no copy produced, and,
// once destroyed, have left no element and no allocation behind. The operations that must leave
// the container as it was keep that promise.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "zt/containers/array.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_parray.h"
#include "zt/containers/list.h"
#include "zt/containers/pdlist.h"
#include "zt/containers/pxlist.h"
#include "zt/containers/xlist.h"

namespace zt::test {
namespace {

struct CopyFailed {};

/// A value whose copy construction and copy assignment throw CopyFailed once armed: the nth copy
/// after Arm(n). Counts its live instances. A default-made one holds -1, which no test value is.
class Throwing {
 public:
  Throwing() { ++s_live; }
  Throwing(int v) : m_value(v) { ++s_live; }  // NOLINT(google-explicit-constructor): test values
  Throwing(const Throwing& o) : m_value(o.m_value) {
    Tick();
    ++s_live;
  }
  Throwing& operator=(const Throwing& o) {
    Tick();
    m_value = o.m_value;
    return *this;
  }
  ~Throwing() { --s_live; }
  bool operator==(const Throwing& o) const { return m_value == o.m_value; }
  bool operator!=(const Throwing& o) const { return m_value != o.m_value; }
  bool operator<(const Throwing& o) const { return m_value < o.m_value; }
  bool operator>(const Throwing& o) const { return m_value > o.m_value; }

  /// The nth copy from now throws; 0 disarms.
  static void Arm(long n) { s_countdown = n; }
  static long Live() { return s_live; }

 private:
  static void Tick() {
    if (s_countdown > 0 && --s_countdown == 0) throw CopyFailed();
  }
  int m_value = -1;
  static inline long s_live = 0;
  static inline long s_countdown = 0;
};

int Descending(const Throwing& a, const Throwing& b) { return a < b ? 1 : (a > b ? -1 : 0); }

using Seq = ZtDynArrayBase<Throwing>;
template <class C>
using Op = std::function<void(C&, C&)>;
/// When a call that throws must leave the container as it was: never, when an allocation failed,
/// or also when an element's copy threw.
enum Keeps { kValid, kOnBadAlloc, kAlways };
template <class C>
struct Row {
  const char* name;
  Op<C> op;
  Keeps keeps = kValid;
};

/// What a throwing call must not change: the elements and, on a sequence, the cursor.
template <class C>
auto State(C& x) {
  if constexpr (std::is_base_of_v<Seq, C>) {
    return std::make_tuple(Values(x), x.GetCur());
  } else {
    return std::make_tuple(Values(x), 0);
  }
}

/// The length counts the elements of the forward walk; on a list the backward walk and the
/// positional reads (a grouped list's index) reach the same elements.
template <class C>
void ExpectValid(C& c) {
  if constexpr (std::is_base_of_v<Seq, C>) {
    EXPECT_EQ(static_cast<ZtLong>(Values(c).size()), c.GetLength());
    if constexpr (std::is_base_of_v<ZtList<Throwing>, C>) {
      EXPECT_EQ(BackwardValues(c), Values(c));
      EXPECT_EQ(PositionalValues(c), Values(c));
    }
  } else {
    EXPECT_EQ(static_cast<ZtLong>(Values(c).size()), c.GetLength());
  }
}

/// After a throw: no element that no copy produced (the owning containers' empty places aside).
template <class C>
void ExpectNoneMadeUp(const C& c) {
  if constexpr (std::is_same_v<decltype(Values(c)), std::vector<Throwing>>) {
    const auto values = Values(c);
    EXPECT_EQ(std::count(values.begin(), values.end(), Throwing()), 0) << "a default-made element";
  }
}

// Runs each row on fresh containers from make(), with the 1st, 2nd, ... copy throwing until the
// row completes; then, unless it keeps nothing, with the 1st, 2nd, ... allocation failing.
template <class C, class Make>
void Sweep(Make make, const std::vector<Row<C>>& rows) {
  for (const Row<C>& row : rows) {
    SCOPED_TRACE(row.name);
    for (long n = 1; n < 10000; ++n) {
      const long live = Throwing::Live();
      const long allocations = LiveAllocations();
      bool threw = false;
      {
        C c = make(6);
        C other = make(9);
        const auto before = State(c);
        Throwing::Arm(n);
        try {
          row.op(c, other);
        } catch (const CopyFailed&) {
          threw = true;
        }
        Throwing::Arm(0);
        if (threw) {
          EXPECT_TRUE(row.keeps != kAlways || State(c) == before) << "changed by copy " << n;
          ExpectNoneMadeUp(c), ExpectNoneMadeUp(other);
        }
        ExpectValid(c), ExpectValid(other);
      }
      EXPECT_EQ(Both(Throwing::Live(), LiveAllocations()), Both(live, allocations))
          << "left behind when copy " << n << " threw";
      if (!threw || ::testing::Test::HasFailure()) break;
    }
    if (row.keeps != kValid) {
      C c = make(6);
      C other = make(9);
      ExpectStrongGuarantee(
          c, [&](C& x) { row.op(x, other); }, State<C>);
    }
  }
}

// Sequences of `n` values whose storage is full, so that every insertion allocates.
template <class C>
C MakeSequence(int n) {
  C c;
  for (int i = 0; i < n; ++i) c.Append(Throwing((i * 5) % 7));
  if constexpr (std::is_base_of_v<ZtDynArray<Throwing>, C>) c.SetSpaceSize(c.GetLength());
  c.MoveTo(2);
  return c;
}

template <class C>
std::vector<Row<C>> SequenceRows() {
  std::vector<Row<C>> rows = {
      {"copy construct", [](C& c, C&) { static_cast<void>(C(c).GetLength()); }, kAlways},
      {"array from sequence", [](C& c, C&) { ZtArray<Throwing> a(c); }, kAlways},
      {"assign", [](C& c, C& o) { c = o; }, kOnBadAlloc},
      {"append", [](C& c, C&) { c.Append(c.GetAt(1)); }, kAlways},
      {"insert head", [](C& c, C&) { c.InsertHead(4); }, kAlways},
      {"insert", [](C& c, C&) { c.Insert(3, 4); }, kAlways},
      {"insert at cursor", [](C& c, C&) { c.InsertCur(4); }, kAlways},
      {"grow", [](C& c, C&) { c.SetLength(12, true); }, kAlways},
      {"grow through subscript", [](C& c, C&) { static_cast<void>(c[10]); }, kAlways},
      {"append sequence", [](C& c, C& o) { c << o; }, kAlways},
      {"append itself", [](C& c, C&) { c << c; }, kAlways},
      {"find or append", [](C& c, C&) { c.FindOrAppend(40); }, kAlways},
      {"sorted insertion", [](C& c, C&) { c.SortInto(3, true); }},
      {"delete at cursor", [](C& c, C&) { c.DelCur(); }},
      {"shrink", [](C& c, C&) { c.SetLength(2, true); }},
      {"find and delete", [](C& c, C&) { c.FindDel(5); }},
      {"exchange", [](C& c, C&) { c.Exchange(0, 4); }},
      {"move", [](C& c, C&) { c.Move(4, 1); }},
      {"reverse", [](C& c, C&) { c.Reverse(0, -1); }},
      {"fill", [](C& c, C&) { c.SetAll(8); }},
      {"slice", [](C& c, C& o) { c.Mid(1, 4, o), c.Left(3, c); }},
      {"deep copy of an array", [](C& c, C& o) { c.DeepCopy(ZtArray<Throwing>(o)); }},
      {"sort", [](C& c, C&) { c.Sort(true); }},
      {"sort by comparator", [](C& c, C&) { c.Sort(Descending); }},
  };
  if constexpr (std::is_constructible_v<C, const Seq&>) {
    rows.push_back({"construct from sequence",
                    [](C& c, C&) { static_cast<void>(C(static_cast<Seq&>(c)).GetLength()); },
                    kAlways});
  }
  if constexpr (std::is_base_of_v<ZtList<Throwing>, C>) {
    rows.push_back({"insert after cursor", [](C& c, C&) { c.InsertAfterCur(4); }, kAlways});
    rows.push_back({"reverse and rotate", [](C& c, C&) { c.ReverseList(), c.Rotate(1, 4); }});
  }
  return rows;
}

template <class C>
class ThrowingSequenceTest : public ::testing::Test {};
using Sequences =
    ::testing::Types<ZtDynArray<Throwing>, ZtList<Throwing>, ZtDList<Throwing>, ZtXList<Throwing>>;
TYPED_TEST_SUITE(ThrowingSequenceTest, Sequences);

TYPED_TEST(ThrowingSequenceTest, EveryOperationCompletesOrThrowsAndLeavesItValid) {
  Sweep<TypeParam>(MakeSequence<TypeParam>, SequenceRows<TypeParam>());
}

TEST(ThrowingElements, FixedArrayOperationsCompleteOrThrowAndLeaveItValid) {
  using A = ZtArray<Throwing>;
  const auto make = [](int n) {
    A a;
    for (int i = 0; i < n; ++i) a.Append(Throwing((i * 5) % 7));
    return a;
  };
  Sweep<A>(make,
           {
               {"copy construct", [](A& a, A&) { static_cast<void>(A(a).GetLength()); }, kAlways},
               {"assign, same length", [](A& a, A&) { a = A(a); }},
               {"assign", [](A& a, A& o) { a = o; }, kAlways},
               {"insert", [](A& a, A&) { a.Insert(2, a[4]); }, kAlways},
               {"append", [](A& a, A&) { a.Append(1); }, kAlways},
               {"delete", [](A& a, A&) { a.Del(1); }, kAlways},
               {"find and delete", [](A& a, A&) { a.FindDel(5); }, kAlways},
               {"resize", [](A& a, A&) { a.ReAllocate(9, true); }, kAlways},
               {"find or append", [](A& a, A&) { a.FindOrAppend(40); }, kAlways},
               {"reverse", [](A& a, A&) { a.Reverse(0, -1); }},
               {"fill", [](A& a, A&) { a.SetAll(3); }},
               {"sort", [](A& a, A&) { a.Sort(false); }},
               {"sort by comparator", [](A& a, A&) { a.Sort(Descending); }},
           });
}

// Owning containers copy their objects when copied, and FindDataOrAppend copies its argument.
template <class C>
class ThrowingOwningTest : public ::testing::Test {};
using Owning = ::testing::Types<ZtDynPArray<Throwing>, ZtPDList<Throwing>, ZtPXList<Throwing>>;
TYPED_TEST_SUITE(ThrowingOwningTest, Owning);

TYPED_TEST(ThrowingOwningTest, CopiesOfObjectsCompleteOrThrowAndLeaveItValid) {
  using C = TypeParam;
  const auto make = [](int n) {
    C c;
    for (int i = 0; i < n; ++i) c.Append(i % 4 == 1 ? nullptr : new Throwing(i));
    return c;
  };
  std::vector<Row<C>> rows = {
      {"copy construct", [](C& c, C&) { static_cast<void>(C(c).GetLength()); }},
      {"assign", [](C& c, C& o) { c = o; }},
      {"append a copy", [](C& c, C& o) { c << o; }},
      {"slice", [](C& c, C& o) { c.Right(4, o), c.Left(3, c); }},
  };
  if constexpr (!std::is_same_v<C, ZtDynPArray<Throwing>>) {
    rows.push_back({"find or append", [](C& c, C&) { c.FindDataOrAppend(Throwing(40)); }});
    rows.push_back({"find or insert head", [](C& c, C&) { c.FindDataOrInsertHead(41); }});
  }
  Sweep<C>(make, rows);
}

}  // namespace
}  // namespace zt::test
