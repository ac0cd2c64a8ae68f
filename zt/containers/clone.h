// zt/containers/clone.h
//
// ZtCloner<T>: how the owning containers copy an object they hold. This is the library's one
// customisation point for cloning. By default a T with a `Clone() const` member returning a
// pointer convertible to T* is cloned through it (so a polymorphic class keeps its dynamic
// class); any other T is copied with `new T(obj)`, and a T that can be neither (abstract or not
// copyable) clones to null. Specialise ZtCloner for a class that needs another rule:
//
//   template <> struct ZtCloner<Shape> {
//     static Shape* Clone(const Shape& s) { return s.Copy(); }
//   };
//
// Copying from one owning container into another (copy construction, assignment, DeepCopy,
// operator<<, Left/Right/Mid) clones every object through this point, so that the two
// containers never hold the same object. A Clone that returns null leaves an empty place.
#ifndef ZT_CONTAINERS_CLONE_H_
#define ZT_CONTAINERS_CLONE_H_

#include <type_traits>
#include <utility>

/// Default cloning: the object's own Clone() when it has one, otherwise its copy constructor.
template <class T, class Enable = void>
struct ZtCloner {
  static T* Clone(const T& obj) {
    if constexpr (std::is_copy_constructible_v<T> && !std::is_abstract_v<T>) {
      return new T(obj);
    } else {
      return nullptr;
    }
  }
};

template <class T>
struct ZtCloner<
    T, std::enable_if_t<std::is_convertible_v<decltype(std::declval<const T&>().Clone()), T*>>> {
  static T* Clone(const T& obj) { return obj.Clone(); }
};

namespace zt::detail {

// Marks a container that owns the objects its pointer elements point to. Empty, so it adds
// nothing to the layout; the copying algorithms look for it to decide whether to clone.
class OwnsPointees {};

// True when `seq` is an owning container (only pointer sequences can be).
template <class Seq>
bool IsOwning(const Seq& seq) {
  return dynamic_cast<const OwnsPointees*>(&seq) != nullptr;
}

// Deletes the object at the cursor of a pointer sequence and leaves an empty place there; nothing
// when the cursor is out or the place is empty.
template <class Seq>
void DeleteCurObject(Seq& s) {
  if (s.IsOut()) return;
  auto* p = s.GetCurData();
  if (p == nullptr) return;
  s.SetCurData(nullptr);
  delete p;
}

// When `dst` owns the objects its elements point to, deletes every one of them and leaves empty
// places. The copying algorithms call it before they overwrite all of dst's elements, so that an
// owning target whose length change keeps its old pointers loses none of them.
template <class T, class Seq>
void ReleaseIfOwning(Seq& dst) {
  if constexpr (std::is_pointer_v<T> && std::is_object_v<std::remove_pointer_t<T>>) {
    if (!IsOwning(dst)) return;
    for (dst.MoveToFirst(); !dst.IsOut(); dst.MoveToNext()) DeleteCurObject(dst);
  }
}

// The value to store when copying element `v` from `src` to `dst`: a clone of the object when
// both own their objects, the element itself otherwise.
template <class T>
struct ElementCopier {
  bool clone = false;
  template <class Seq>
  ElementCopier(const Seq& src, const Seq& dst) {
    if constexpr (std::is_pointer_v<T>) clone = IsOwning(src) && IsOwning(dst);
  }
  decltype(auto) operator()(const T& v) const {
    if constexpr (std::is_pointer_v<T>) {
      T out = clone && v != nullptr ? ZtCloner<std::remove_pointer_t<T>>::Clone(*v) : v;
      return out;
    } else {
      return (v);  // a reference: no copy for non-pointer elements
    }
  }
  // Deletes the clones among the first n values made by this copier and never stored.
  void Discard(T* values, ZtLong n) const {
    if constexpr (std::is_pointer_v<T>) {
      for (ZtLong k = 0; clone && k < n; ++k) delete values[k];
    }
  }
};

}  // namespace zt::detail

#endif  // ZT_CONTAINERS_CLONE_H_
