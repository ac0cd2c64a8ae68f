// tests/gdb/views.cpp
//
// The program the debugger-view test stops in: one object of each kind the printers show, built
// in main and inspected at the call of Stop().
#include <zt/zt.h>

class Key : public ZtGraphNode {
 public:
  explicit Key(int k) : m_key(k) {}
  int CmpNode(const ZtGraphNode& o) const override {
    return m_key - static_cast<const Key&>(o).m_key;
  }

 private:
  int m_key;
};

/// An object an owning list holds, shown as its fields.
struct Job {
  bool operator<(const Job& o) const { return id < o.id; }
  bool operator>(const Job& o) const { return id > o.id; }
  bool operator==(const Job& o) const { return id == o.id; }
  bool operator!=(const Job& o) const { return id != o.id; }
  int id;
};

/// A client's class that adds nothing: shown as the array it is.
class Ids : public ZtDynArray<int> {};

void Stop() {}

int main() {
  ZtDynArray<int> array;
  array << 3 << 1 << 2;
  array.MoveTo(1);
  Ids ids;
  ids << 7;
  ZtArray<short> fixed(2);
  fixed.SetAt(0, 8);
  fixed.SetAt(1, 9);
  ZtDList<int> dlist;
  dlist << 5 << 6;
  ZtXList<int> xlist(0, 2);
  xlist << 1 << 2 << 3;
  ZtPDList<Job> owning;
  owning.Append(new Job{4});
  owning.Append(nullptr);
  ZtListQuene<ZtLong> queue(4);
  queue.Push(11);
  ZtDynArrayBase<int>& base = dlist;
  ZtStringA narrow("item\"1");
  ZtStringW wide(L"wide");
  ZtBitArray bits(5, 2);
  bits.SetValue(1, 3);
  bits.SetValue(4, 1);
  ZtBit2dArray grid(2, 2, 1);
  grid.SetValue(1, 0, 1);
  ZtDynArrayStream stream;
  stream << ZtLong{1} << short{-2};
  ZtDynArrayStreamEx blocks(4);
  blocks << 1.5;
  ZtStream& some = blocks;
  ZtGraph graph;
  graph.Create(new ZtGraphArc(new Key(1), new Key(2)));
  Stop();
  return array.GetLength() + base.GetLength() + some.GetLength() > 0 ? 0 : 1;
}
