// zt/rtclass/run_time_class.h
//
// The library's own run-time class information. Every participating class has one static
// descriptor, ZtRxClassInfo: a name, a numeric id, up to five direct base descriptors and, for
// classes creatable by descriptor, a creation function. Objects derive from ZtRxRunTimeClass
// (or ZtRxDynCreateClass, when they can be created from their descriptor alone) and answer
// kind-of (IsClassOf: the class itself or anything above it) and exact-class (IsTypeOf) queries
// through their virtual GetCI().
//
//   class Shape : public ZtRxRunTimeClass { ZT_DECLARE_RX_CLASS(Shape) };
//   ZT_DEFINE_RX_CLASS(Shape, 100, ZtRxRunTimeClass);   // in one .cpp: name "Shape", id 100
//
// Kind-of walks the bases depth-first in their declared order, stopping at the first null base,
// and then tests the descriptor itself. By-name queries compare with strcmp (so two descriptors
// with one name are one class to them); by-descriptor queries compare addresses. Descriptors are
// constant-initialised, never copied and never change, so queries are safe from any thread. The
// caller owns what NewObject returns and deletes it through the virtual destructor.
#ifndef ZT_RTCLASS_RUN_TIME_CLASS_H_
#define ZT_RTCLASS_RUN_TIME_CLASS_H_

#include <cstddef>

#include "zt/checked.h"
#include "zt/config.h"

class ZtRxDynCreateClass;

/// The static descriptor of one participating class. It points at its name (a string literal)
/// and at its bases' descriptors; it owns nothing.
class ZT_API ZtRxClassInfo {
 public:
  /// Stores the arguments; unused bases are null. A root class passes null everywhere.
  constexpr ZtRxClassInfo(const char* name, ZtLong id, ZtRxDynCreateClass* (*creator)(),
                          ZtRxClassInfo* base1, ZtRxClassInfo* base2, ZtRxClassInfo* base3,
                          ZtRxClassInfo* base4, ZtRxClassInfo* base5)
      : m_id(id), m_name(name), m_bases{base1, base2, base3, base4, base5}, m_creator(creator) {}
  ZtRxClassInfo(const ZtRxClassInfo&) = delete;
  ZtRxClassInfo& operator=(const ZtRxClassInfo&) = delete;
  virtual ~ZtRxClassInfo();

  /// The class name (narrow, despite the W).
  const char* GetClassNameW() const { return m_name; }
  ZtLong GetClassID() const { return m_id; }
  /// Direct base i (0 to 4, unchecked; the checked build reports another i), or null.
  const ZtRxClassInfo* GetBaseClassInfo(int i) const {
    ZT_REPORT_UNLESS(i >= 0 && i < 5, "GetBaseClassInfo", "ZtRxClassInfo", "index", i);
    return m_bases[i];
  }
  /// Exact class, by name.
  bool IsTypeOf(const char* name) const;
  /// Exact class, by descriptor identity.
  bool IsTypeOf(const ZtRxClassInfo* ci) const { return this == ci; }
  /// True when `name` names this class or any class above it.
  bool IsClassOf(const char* name) const;
  /// True when ci is this descriptor or one above it.
  bool IsClassOf(const ZtRxClassInfo* ci) const;
  /// A new object from the creation function, or null for a class without one.
  ZtRxDynCreateClass* NewObject() const { return m_creator != nullptr ? m_creator() : nullptr; }

 protected:
  ZtLong m_id;
  const char* m_name;
  ZtRxClassInfo* m_bases[5];
  ZtRxDynCreateClass* (*m_creator)();
};

/// The root of the participating classes: queries go through the object's virtual GetCI().
class ZT_API ZtRxRunTimeClass {
 public:
  ZtRxRunTimeClass() = default;
  ZtRxRunTimeClass(const ZtRxRunTimeClass&) = default;
  ZtRxRunTimeClass& operator=(const ZtRxRunTimeClass&) = default;
  /// The descriptor of the object's dynamic class.
  virtual const ZtRxClassInfo* GetCI() const;
  virtual ~ZtRxRunTimeClass();

  static ZtRxClassInfo& GetStaticCI() { return s_classInfo; }
  bool IsClassOf(const ZtRxClassInfo* ci) const { return GetCI()->IsClassOf(ci); }
  bool IsClassOf(const char* name) const { return GetCI()->IsClassOf(name); }
  bool IsTypeOf(const ZtRxClassInfo* ci) const { return GetCI() == ci; }
  bool IsTypeOf(const char* name) const { return GetCI()->IsTypeOf(name); }
  /// True when both objects have the same dynamic class descriptor.
  bool IsSameClass(const ZtRxRunTimeClass& other) const { return GetCI() == other.GetCI(); }
  const char* GetClassNameW() const { return GetCI()->GetClassNameW(); }
  ZtLong GetClassID() const { return GetCI()->GetClassID(); }

  /// "ZtRxRunTimeClass", id 0, no creation function, no bases.
  static ZtRxClassInfo s_classInfo;
};

// ---- How a client class takes part
// ---------------------------------------------------------------
//
// In the class body, ZT_DECLARE_RX_CLASS(Class) declares the public static descriptor
// s_classInfo, GetStaticCI() and the GetCI() override; ZT_DECLARE_RX_DYNCREATE(Class) adds the
// static NewObject() that creates the class with new and returns what its InitObject() returns.
// Both leave the access public. In one source file, ZT_DEFINE_RX_CLASS(Class, id, Bases...) or
// ZT_DEFINE_RX_DYNCREATE(Class, id, Bases...) defines the descriptor, named after the class, with
// the direct participating base classes (one to five) in declaration order.

#define ZT_DECLARE_RX_CLASS(Class)                            \
 public:                                                      \
  static ZtRxClassInfo s_classInfo;                           \
  static ZtRxClassInfo& GetStaticCI() { return s_classInfo; } \
  const ZtRxClassInfo* GetCI() const override { return &s_classInfo; }

#define ZT_DECLARE_RX_DYNCREATE(Class)                                         \
  ZT_DECLARE_RX_CLASS(Class)                                                   \
  static ZtRxDynCreateClass* NewObject() {                                     \
    return (new Class)->InitObject(); /* NOLINT(bugprone-macro-parentheses) */ \
  }

#define ZT_DEFINE_RX_CLASS(Class, id, ...) \
  ZtRxClassInfo Class::s_classInfo(#Class, id, nullptr, ZT_RX_BASES(__VA_ARGS__))

#define ZT_DEFINE_RX_DYNCREATE(Class, id, ...) \
  ZtRxClassInfo Class::s_classInfo(#Class, id, &Class::NewObject, ZT_RX_BASES(__VA_ARGS__))

// The five base arguments of a descriptor: the bases' descriptors, then nulls.
#define ZT_RX_BASES(...)                                                          \
  zt::detail::RxBase<0, __VA_ARGS__>(), zt::detail::RxBase<1, __VA_ARGS__>(),     \
      zt::detail::RxBase<2, __VA_ARGS__>(), zt::detail::RxBase<3, __VA_ARGS__>(), \
      zt::detail::RxBase<4, __VA_ARGS__>()

namespace zt::detail {

/// The descriptor of the I-th of Bases, or null past the last; a constant expression, so that the
/// descriptors built from it are initialised before any code runs.
template <std::size_t I, class... Bases>
constexpr ZtRxClassInfo* RxBase() {
  static_assert(sizeof...(Bases) <= 5, "a descriptor holds at most five bases");
  if constexpr (I < sizeof...(Bases)) {
    ZtRxClassInfo* const bases[] = {&Bases::s_classInfo...};
    return bases[I];
  } else {
    return nullptr;
  }
}

}  // namespace zt::detail

/// The root of classes that can be created from their descriptor alone.
class ZT_API ZtRxDynCreateClass : public ZtRxRunTimeClass {
  ZT_DECLARE_RX_DYNCREATE(ZtRxDynCreateClass)

  ZtRxDynCreateClass() = default;
  ZtRxDynCreateClass(const ZtRxDynCreateClass&) = default;
  ZtRxDynCreateClass& operator=(const ZtRxDynCreateClass&) = default;
  ~ZtRxDynCreateClass() override;
  /// Run on every object that NewObject creates; returns the object to hand out (this, unless an
  /// override substitutes another).
  virtual ZtRxDynCreateClass* InitObject() { return this; }
};

#endif  // ZT_RTCLASS_RUN_TIME_CLASS_H_
