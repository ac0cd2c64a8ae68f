// tests/support/tracked.h
//
// Tracked: an element type that counts its live instances and compares by value. It is not
// trivially copyable, so containers take their element-by-element paths for it.
#ifndef ZT_TESTS_SUPPORT_TRACKED_H_
#define ZT_TESTS_SUPPORT_TRACKED_H_

#include <ostream>

class Tracked {
 public:
  Tracked() { ++s_live; }
  Tracked(int v) : m_value(v) { ++s_live; }  // NOLINT(google-explicit-constructor): test values
  Tracked(const Tracked& other) : m_value(other.m_value) { ++s_live; }
  Tracked& operator=(const Tracked& other) = default;
  ~Tracked() { --s_live; }

  int value() const { return m_value; }
  /// Instances alive right now.
  static long Live() { return s_live; }

  friend bool operator==(const Tracked& a, const Tracked& b) { return a.m_value == b.m_value; }
  friend bool operator!=(const Tracked& a, const Tracked& b) { return a.m_value != b.m_value; }
  friend bool operator<(const Tracked& a, const Tracked& b) { return a.m_value < b.m_value; }
  friend bool operator>(const Tracked& a, const Tracked& b) { return a.m_value > b.m_value; }
  friend std::ostream& operator<<(std::ostream& os, const Tracked& t) { return os << t.m_value; }

 private:
  int m_value = 0;
  static long s_live;
};

#endif  // ZT_TESTS_SUPPORT_TRACKED_H_
