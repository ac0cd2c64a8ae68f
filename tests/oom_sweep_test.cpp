// The out-of-memory sweep: allocating operations that the per-class tests do not already sweep
// run with their 1st, 2nd, ... allocation failing until they succeed. After each failure the
// object must be as it was and nothing may be left allocated; it is then used and destroyed.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/list.h"
#include "zt/containers/pdlist.h"
#include "zt/containers/xlist.h"
#include "zt/streams/dyn_array_stream.h"
#include "zt/text/string.h"

namespace zt::test {
namespace {

// Each operation on a fresh object from make(), compared through state().
template <class Obj, class Make, class State>
void Sweep(Make make, State state, const std::vector<std::function<void(Obj&)>>& ops) {
  for (size_t k = 0; k < ops.size(); ++k) {
    SCOPED_TRACE(testing::Message() << "operation " << k);
    Obj obj = make();
    ExpectStrongGuarantee(obj, ops[k], state);
  }
}

// Moves, appends of the sequence to itself, FindOrAppend and InsertHead on each kind.
template <class Seq, class New>
void SweepSequence(New make) {
  Sweep<Seq>(
      [&make] {
        Seq s = make();
        Fill(s, {1, 3, 5});
        return s;
      },
      [](const Seq& s) { return std::make_tuple(Values(s), s.GetCur()); },
      {[](Seq& s) { s.Move(0, 3); }, [](Seq& s) { s << s; }, [](Seq& s) { s.FindOrAppend(9); },
       [](Seq& s) { s.InsertHead(7); }});
}

TEST(OutOfMemorySweep, SequencesStayAsTheyWere) {
  SweepSequence<ZtDynArray<int>>([] { return ZtDynArray<int>(3, 1); });
  SweepSequence<ZtList<int>>([] { return ZtList<int>(); });
  SweepSequence<ZtDList<int>>([] { return ZtDList<int>(); });
  // Small groups and index unit: the index grows too.
  SweepSequence<ZtXList<int>>([] { return ZtXList<int>(0, 2, 1); });
  Sweep<ZtPDList<int>>(
      [] {
        ZtPDList<int> l;
        l.Append(new int(1));
        return l;
      },
      [](const ZtPDList<int>& l) { return std::make_tuple(Values(l), l.GetCur()); },
      {[](ZtPDList<int>& l) { l.SetLength(5, true); }});
}

TEST(OutOfMemorySweep, StringsAndStreamsKeepTheirContents) {
  Sweep<ZtStringA>(
      [] { return ZtStringA("abc"); },
      [](const ZtStringA& s) { return std::make_tuple(std::string(s), s.GetLength()); },
      {[](ZtStringA& s) { s.ReAllocate(40, true); }});
  static char block[40] = "forty bytes of data for the unit chains";
  Sweep<ZtDynArrayStream>(
      [] {
        ZtDynArrayStream s(4, 2);
        s << ZtLong{1};
        return s;
      },
      [](ZtDynArrayStream& s) {
        std::vector<char> bytes(static_cast<size_t>(s.GetLength()));
        const ZtLong at = s.GetCur();
        s.MoveToFirst(), s.Read(bytes.data(), s.GetLength()), s.MoveTo(at);
        return std::make_tuple(bytes, at);
      },
      {[](auto& s) { s.Write(block, 40); }, [](auto& s) { s = ZtDynArrayStream(); }});
}

}  // namespace
}  // namespace zt::test
