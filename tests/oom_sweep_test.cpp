// The out-of-memory sweep: every allocating operation of each family runs with its 1st, 2nd, ...
// allocation failing until it succeeds. After each failure the object must be as it was (the
// all-or-nothing promise of these operations) and nothing may be left allocated; the object is
// then used and destroyed normally.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_parray.h"
#include "zt/containers/list.h"
#include "zt/containers/pdlist.h"
#include "zt/containers/xlist.h"
#include "zt/streams/dyn_array_stream.h"
#include "zt/streams/dyn_array_stream_ex.h"
#include "zt/text/string.h"

namespace {

using zt::test::ExpectStrongGuarantee;
using zt::test::Values;

// Runs each named operation on a fresh object from make(), sweeping its allocations.
template <class Obj, class Make, class State>
void Sweep(Make make, State state,
           std::vector<std::pair<const char*, std::function<void(Obj&)>>> ops) {
  for (auto& [name, op] : ops) {
    SCOPED_TRACE(name);
    auto obj = make();
    ExpectStrongGuarantee(obj, op, state);
  }
}

template <class Seq>
auto SequenceState(const Seq& s) {
  return std::make_tuple(Values(s), s.GetCur());
}

template <class Seq>
void SweepSequence(std::function<Seq()> make) {
  Sweep<Seq>(make, SequenceState<Seq>,
             {{"Append", [](Seq& s) { s.Append(7); }},
              {"Insert", [](Seq& s) { s.Insert(1, 7); }},
              {"InsertHead", [](Seq& s) { s.InsertHead(7); }},
              {"Move", [](Seq& s) { s.Move(0, 3); }},
              {"FindOrAppend", [](Seq& s) { s.FindOrAppend(9); }},
              {"append itself", [](Seq& s) { s << s; }}});
}

TEST(OutOfMemorySweep, SequencesStayAsTheyWere) {
  SweepSequence<ZtDynArray<int>>([] {
    ZtDynArray<int> a(3, 1);
    zt::test::Fill(a, {1, 3, 5});
    return a;
  });
  SweepSequence<ZtList<int>>([] {
    ZtList<int> l;
    zt::test::Fill(l, {1, 3, 5});
    return l;
  });
  SweepSequence<ZtDList<int>>([] {
    ZtDList<int> l;
    zt::test::Fill(l, {1, 3, 5});
    return l;
  });
  SweepSequence<ZtXList<int>>([] {
    ZtXList<int> l(0, 2, 1);  // small groups and a small index unit: the index grows too
    zt::test::Fill(l, {1, 3, 5});
    return l;
  });
}

TEST(OutOfMemorySweep, OwningContainersLeakNothing) {
  const auto objects = [](const auto& s) {
    std::vector<int> out;
    out.reserve(static_cast<size_t>(s.GetLength()));
    for (ZtLong i = 0; i < s.GetLength(); ++i) out.push_back(s.GetPData(i));
    return std::make_tuple(out, s.GetCur());
  };
  Sweep<ZtDynPArray<int>>(
      [] {
        ZtDynPArray<int> a(2, 0);
        a.Append(new int(1));
        a.Append(new int(2));
        return a;
      },
      objects,
      {{"copy", [](auto& a) {
          const ZtDynPArray<int> b(a);  // NOLINT(performance-unnecessary-copy-initialization)
          EXPECT_TRUE(b == a);
        }}});
  Sweep<ZtPDList<int>>(
      [] {
        ZtPDList<int> l;
        l.Append(new int(1));
        l.Append(new int(2));
        return l;
      },
      objects,
      {{"copy",
        [](auto& l) {
          const ZtPDList<int> m(l);  // NOLINT(performance-unnecessary-copy-initialization)
          EXPECT_TRUE(m == l);
        }},
       {"SetLength", [](auto& l) { l.SetLength(5, true); }}});
}

TEST(OutOfMemorySweep, StringsKeepTextAndCapacity) {
  const auto state = [](const ZtStringA& s) {
    return std::make_tuple(std::string(s), s.GetLength());
  };
  Sweep<ZtStringA>([] { return ZtStringA("abcabc"); }, state,
                   {{"<< text", [](ZtStringA& s) { s << "defg"; }},
                    {"<< itself", [](ZtStringA& s) { s << s; }},
                    {"<< int", [](ZtStringA& s) { s << -12345; }},
                    {"Insert", [](ZtStringA& s) { s.Insert(2, ZtStringA("xyz")); }},
                    {"Replace", [](ZtStringA& s) { s.Replace("b", "long"); }},
                    {"assign", [](ZtStringA& s) { s = "a longer text than before"; }},
                    {"ReAllocate", [](ZtStringA& s) { s.ReAllocate(40, true); }}});
}

TEST(OutOfMemorySweep, StreamsKeepTheirBytes) {
  const auto state = [](auto& s) {
    std::vector<char> bytes(static_cast<size_t>(s.GetLength()));
    const ZtLong at = s.GetCur();
    s.MoveToFirst();
    s.Read(bytes.data(), s.GetLength());
    s.MoveTo(at);
    return std::make_tuple(bytes, at, s.GetLength());
  };
  char block[40] = "forty bytes of data for the unit chains";
  Sweep<ZtDynArrayStream>(
      [] {
        ZtDynArrayStream s(4, 2);
        s << ZtLong{1};
        return s;
      },
      state, {{"Write", [&](auto& s) { s.Write(block, 40); }}, {"assign", [](auto& s) {
                                                                  s = ZtDynArrayStream();
                                                                }}});
  Sweep<ZtDynArrayStreamEx>(
      [] {
        ZtDynArrayStreamEx s(3);
        s << ZtLong{1};
        return s;
      },
      state, {{"Write", [&](auto& s) { s.Write(block, 40); }}, {"assign", [](auto& s) {
                                                                  ZtDynArrayStreamEx t(5);
                                                                  t << 2.5;
                                                                  s = t;
                                                                }}});
}

}  // namespace
