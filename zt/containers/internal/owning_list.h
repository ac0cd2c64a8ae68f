// zt/containers/internal/owning_list.h
//
// Internal: the owning members that ZtPDList<T> and ZtPXList<T> share. Each class declares them
// itself, so that its interface, its member pointers and its exported instantiations hold them;
// the macro below writes the declarations once and the bodies live once in
// zt::detail::owning. Their contract is documented in pdlist.h; nothing here is interface.
#ifndef ZT_CONTAINERS_INTERNAL_OWNING_LIST_H_
#define ZT_CONTAINERS_INTERNAL_OWNING_LIST_H_

#include "zt/checked.h"
#include "zt/config.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/internal/owning.h"
#include "zt/containers/quene.h"

namespace zt::detail::owning {

// Inserts a copy of v (new T(v)) with `insert` when no object equals v; the copy is deleted again
// when the insertion throws. Returns the index of the equal object, or what `insert` returns.
template <class T, class Insert>
auto InsertCopyUnlessFound(const Seq<T>& s, const T& v, Insert insert) {
  const ZtLong i = FindData(s, v, 0, -1, "");  // from 0: nothing to report
  if (i != -1) return i;
  T* copy = new T(v);
  try {
    return insert(copy);
  } catch (...) {
    delete copy;
    throw;
  }
}

}  // namespace zt::detail::owning

// The members of an owning list class `Class` over the list base `Base` (a type alias in the
// class), element pointers T*: the owning slots DelCur, Reset, Sort(bool) and Move, the appended
// slot Sort(int (*)(const T&, const T&)), the non-virtual owning interface, and the protected
// ReAllocate. Comments inside a macro must be block comments.
#define ZT_DETAIL_OWNING_LIST_MEMBERS(Class)                                                       \
 public:                                                                                           \
  /* Deletes the object at the cursor, then unlinks its node: a destructor that looks at the  */   \
  /* list still finds its own place in it. */                                                      \
  void DelCur() override {                                                                         \
    if (!ZT_IN_CONTRACT(!this->IsOut(), "DelCur", #Class, "cursor", this->m_cur)) return;          \
    delete this->GetCurData();                                                                     \
    Base::DelCur();                                                                                \
  }                                                                                                \
  void Reset() override {                                                                          \
    ReleaseAll();                                                                                  \
    Base::Reset();                                                                                 \
  }                                                                                                \
  void Sort(bool ascending) override {                                                             \
    /* Take the empty places out (the sequence's FindDel by value), sort, put them at the end. */  \
    ZtLong empty = ZtDynArrayBase<T*>::FindDel(nullptr);                                           \
    this->BackwardInsertionSort(zt::detail::owning::ObjectAfter<T>(ascending));                    \
    while (empty-- > 0) this->Append(nullptr);                                                     \
  }                                                                                                \
  bool Move(ZtLong from, ZtLong to) override {                                                     \
    return zt::detail::owning::Move<T>(*this, from, to, #Class);                                   \
  }                                                                                                \
  virtual void Sort(int (*cmp)(const T&, const T&)) {                                              \
    if (cmp != nullptr) this->BackwardInsertionSort(zt::detail::owning::ObjectAfter<T>(cmp));      \
  }                                                                                                \
  using Base::Sort;                                                                                \
                                                                                                   \
  bool IsCurEmpty() const { return zt::detail::owning::IsCurEmpty<T>(*this); }                     \
  bool IsEmptyData(ZtLong i) const { return zt::detail::owning::IsEmptyData<T>(*this, i); }        \
  ZtLong GetDataNum() const { return zt::detail::owning::GetDataNum<T>(*this); }                   \
  T& GetCurPData() {                                                                               \
    return zt::detail::owning::Object(this->GetCurData(), "GetCurPData", #Class, this->m_cur);     \
  }                                                                                                \
  const T& GetPData(ZtLong i) const {                                                              \
    return zt::detail::owning::Object(this->GetAt(i), "GetPData", #Class, i);                      \
  }                                                                                                \
  T& operator()(ZtLong i) {                                                                        \
    return zt::detail::owning::Object((*this)[i], "operator()", #Class, i);                        \
  }                                                                                                \
  void ReleaseCur() { zt::detail::owning::ReleaseCur<T>(*this, #Class); }                          \
  void Release(ZtLong i) {                                                                         \
    this->MoveTo(i);                                                                               \
    ReleaseCur();                                                                                  \
  }                                                                                                \
  void ReleaseAll() { zt::detail::owning::ReleaseAll(*this); }                                     \
  T* TakeOffCur() { return zt::detail::owning::TakeOffListCur<T>(*this); }                         \
  T* TakeOff(ZtLong i) {                                                                           \
    this->MoveTo(i);                                                                               \
    return TakeOffCur();                                                                           \
  }                                                                                                \
  T* TakeOffHead() {                                                                               \
    this->MoveToFirst();                                                                           \
    return TakeOffCur();                                                                           \
  }                                                                                                \
  T* TakeOffTail() {                                                                               \
    this->MoveToLast();                                                                            \
    return TakeOffCur();                                                                           \
  }                                                                                                \
  ZtLong PlaceIn(T* p) { return zt::detail::owning::PlaceIn<T>(*this, p); }                        \
  ZtLong FindData(const T& x, ZtLong from = 0, ZtLong to = -1) const {                             \
    return zt::detail::owning::FindData<T>(*this, x, from, to, #Class);                            \
  }                                                                                                \
  ZtLong FindData(const T& x, ZtQuene<ZtLong>& hits, ZtLong from = 0, ZtLong to = -1) const {      \
    return zt::detail::owning::FindData<T>(*this, x, hits, from, to, #Class);                      \
  }                                                                                                \
  bool FindDataTo(const T& x, ZtLong from = 0, ZtLong to = -1) {                                   \
    return zt::detail::owning::FindDataTo<T>(*this, x, from, to);                                  \
  }                                                                                                \
  ZtLong FindDataOrAppend(const T& x) {                                                            \
    return zt::detail::owning::InsertCopyUnlessFound<T>(*this, x,                                  \
                                                        [this](T* p) { return this->Append(p); }); \
  }                                                                                                \
  void FindDataOrInsertHead(const T& x) {                                                          \
    zt::detail::owning::InsertCopyUnlessFound<T>(*this, x, [this](T* p) {                          \
      this->InsertHead(p);                                                                         \
      return ZtLong{0};                                                                            \
    });                                                                                            \
  }                                                                                                \
  ZtLong FindDataDel(const T& x) { return zt::detail::owning::FindDataDel<T>(*this, x); }          \
  ZtLong FindDel(T* p) { return zt::detail::owning::FindDelWalk<T>(*this, p); }                    \
  ZtLong BFindData(const T& x, ZtLong from = 0, ZtLong to = -1) const {                            \
    return zt::detail::owning::BFindData<T>(*this, x, from, to, #Class);                           \
  }                                                                                                \
  bool BFindDataTo(const T& x, ZtLong from = 0, ZtLong to = -1) {                                  \
    return zt::detail::owning::BFindDataTo<T>(*this, x, from, to, #Class);                         \
  }                                                                                                \
  bool SortInto(T* p, bool allowEqual) {                                                           \
    return zt::detail::owning::SortInto<T>(*this, p, allowEqual,                                   \
                                           zt::detail::owning::EqualObjects<T>);                   \
  }                                                                                                \
  bool operator==(const Class& other) const {                                                      \
    return zt::detail::owning::Equal<T>(*this, other, zt::detail::owning::EqualObjects<T>);        \
  }                                                                                                \
  bool operator!=(const Class& other) const { return !(*this == other); }                          \
                                                                                                   \
 protected:                                                                                        \
  /* Grows with empty places: the list appends T() values, and T() of a pointer is null. */        \
  void ReAllocate(ZtLong n) override { Base::ReAllocate(n); }                                      \
                                                                                                   \
 public:

#endif  // ZT_CONTAINERS_INTERNAL_OWNING_LIST_H_
