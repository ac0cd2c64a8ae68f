// zt/containers/push_var.h
//
// ZtPushVar<T>: a scope guard that gives a variable a value for the guard's lifetime and puts
// the old value back when the guard is destroyed, also when the scope is left by an exception.
//
//   static int depth = 0;
//   { ZtPushVar<int> guard(depth, 1); /* depth == 1 */ }   // depth == 0 again
//
// Nested guards on one variable restore in reverse order. A guard cannot be copied (the copy
// would restore a second time); it lives as a local object and must not outlive the variable.
#ifndef ZT_CONTAINERS_PUSH_VAR_H_
#define ZT_CONTAINERS_PUSH_VAR_H_

/// Saves `var`, sets it to `value`, and restores the saved value on destruction.
template <class T>
class ZtPushVar {
 public:
  ZtPushVar(T& var, const T& value) : m_saved(var), m_var(&var) { var = value; }
  virtual ~ZtPushVar() { *m_var = m_saved; }
  ZtPushVar(const ZtPushVar&) = delete;
  ZtPushVar& operator=(const ZtPushVar&) = delete;

 protected:
  T m_saved;
  T* m_var;
};

#endif  // ZT_CONTAINERS_PUSH_VAR_H_
