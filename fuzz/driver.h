// fuzz/driver.h
//
// What every fuzz target shares: a reader that turns the fuzzer's bytes into operation codes,
// values and indices, the check that aborts on the first disagreement with the reference model,
// and the comparison of a cursor sequence with a std::vector model.
//
//   zt::fuzz::Input in(data, size);
//   while (in.More()) Step(in, in.Byte());   // Step checks the object against its model
#ifndef ZT_FUZZ_DRIVER_H_
#define ZT_FUZZ_DRIVER_H_

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "zt/config.h"
#include "zt/containers/dyn_array_base.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace zt::fuzz {

[[noreturn]] inline void Fail(const char* what, const char* file, int line) {
  std::fprintf(stderr, "%s:%d: model mismatch: %s\n", file, line, what);
  std::abort();
}

#define ZT_FUZZ_CHECK(cond) ((cond) ? (void)0 : ::zt::fuzz::Fail(#cond, __FILE__, __LINE__))

/// The fuzzer's bytes read front to back; past the end every read gives 0.
class Input {
 public:
  Input(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}
  bool More() const { return m_pos < m_size; }
  uint8_t Byte() { return m_pos < m_size ? m_data[m_pos++] : 0; }
  /// A value in [lo, hi].
  ZtLong In(ZtLong lo, ZtLong hi) { return lo + static_cast<ZtLong>(Byte() % (hi - lo + 1)); }
  /// An index for a sequence of n elements: mostly valid, sometimes one or two outside.
  ZtLong Index(ZtLong n) { return In(-2, n + 1); }
  /// A valid index of a non-empty sequence of n elements.
  ZtLong Valid(ZtLong n) { return n > 0 ? In(0, n - 1) : 0; }
  bool Bool() { return (Byte() & 1) != 0; }

 private:
  const uint8_t* m_data;
  size_t m_size;
  size_t m_pos = 0;
};

/// Checks contents walked forward and backward, length and cursor; get(element) gives the value
/// the model holds for it.
template <class T, class V, class Get>
void ExpectSequence(const ZtDynArrayBase<T>& s, const std::vector<V>& model, ZtLong cur, Get get) {
  ZT_FUZZ_CHECK(s.GetLength() == static_cast<ZtLong>(model.size()));
  ZT_FUZZ_CHECK(s.GetCur() == cur);
  size_t i = 0;
  for (const T* p = s.GetFirst(); p != nullptr; p = s.GetNext(p), ++i) {
    ZT_FUZZ_CHECK(i < model.size() && get(*p) == model[i]);
  }
  ZT_FUZZ_CHECK(i == model.size());
  for (const T* p = s.GetLast(); p != nullptr; p = s.GetPre(p)) {
    ZT_FUZZ_CHECK(i > 0 && get(*p) == model[--i]);
  }
  ZT_FUZZ_CHECK(i == 0);
}

/// Builds a Run from the input's first bytes, then feeds it one operation byte at a time.
template <class Run>
int Play(Input& in) {
  Run run(in);
  while (in.More()) run.Step(in, in.Byte());
  return 0;
}

}  // namespace zt::fuzz

#endif  // ZT_FUZZ_DRIVER_H_
