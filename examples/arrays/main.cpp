// A small client of the array containers: fill, sort, search and slice a ZtDynArray, printing
// what each step did to the contents, the capacity and the cursor.
#include <cstdio>

#include <zt/zt.h>

namespace {

void Print(const char* what, const ZtDynArray<int>& a) {
  std::printf("%-34s [", what);
  for (const int* p = a.GetFirst(); p != nullptr; p = a.GetNext(p)) {
    std::printf(p == a.GetFirst() ? "%d" : ", %d", *p);
  }
  std::printf("]  length %d, capacity %d, cursor %d\n", static_cast<int>(a.GetLength()),
              static_cast<int>(a.GetSpaceSize()), static_cast<int>(a.GetCur()));
}

// Collects the hits of a find-all search.
class Hits : public ZtQuene<ZtLong> {
 public:
  void Clear() override { m_count = 0; }
  ZtLong GetCount() const override { return m_count; }
  ZtLong& operator[](ZtLong i) override { return m_items[i]; }
  bool GetHead(ZtLong& out) override { return m_count > 0 && (out = m_items[0], true); }
  bool GetTail(ZtLong& out) override { return m_count > 0 && (out = m_items[m_count - 1], true); }
  bool Push(const ZtLong& v) override {
    if (m_count == kCapacity) return false;
    m_items[m_count++] = v;
    return true;
  }
  bool Pop(ZtLong& out) override {
    if (m_count == 0) return false;
    out = m_items[0];
    for (ZtLong i = 1; i < m_count; ++i) m_items[i - 1] = m_items[i];
    --m_count;
    return true;
  }

 private:
  static constexpr ZtLong kCapacity = 16;
  ZtLong m_items[kCapacity] = {};
  ZtLong m_count = 0;
};

}  // namespace

int main() {
  ZtDynArray<int> a;
  for (int v : {42, 7, 19, 7, 3, 88, 19, 7}) a << v;
  Print("appended eight values:", a);

  a.Sort(true);
  Print("sorted ascending (stable):", a);

  std::printf("BFind(19) -> %d\n", static_cast<int>(a.BFind(19)));
  a.SortInto(20, false);
  Print("SortInto(20):", a);

  Hits hits;
  std::printf("Find(7, hits) -> %d hits:", static_cast<int>(a.Find(7, hits)));
  for (ZtLong i; hits.Pop(i);) std::printf(" %d", static_cast<int>(i));
  std::printf("\n");

  ZtDynArray<int> middle;
  a.Mid(2, 5, middle);
  Print("Mid(2, 5):", middle);
  a.Right(3, middle);
  Print("Right(3):", middle);

  std::printf("FindDel(7) -> %d removed\n", static_cast<int>(a.FindDel(7)));
  Print("after FindDel:", a);
  a.SetSpaceSize(a.GetLength());
  Print("SetSpaceSize(length):", a);
  return 0;
}
