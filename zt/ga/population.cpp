#include "zt/ga/population.h"

#include <cmath>
#include <cstdint>

#include "zt/checked.h"
#include "zt/containers/array.h"
#include "zt/platform/random.h"

template class ZT_INSTANTIATION_API ZtDynArrayBase<GA_Individual*>;
template class ZT_INSTANTIATION_API ZtList<GA_Individual*>;
template class ZT_INSTANTIATION_API ZtDList<GA_Individual*>;
template class ZT_INSTANTIATION_API ZtPDList<GA_Individual>;

// Evolve's snapshot; used inside the library only, not exported.
template class ZtArray<GA_Individual*>;

GA_Population::~GA_Population() = default;

bool GA_Population::IsContinue() { return true; }

void GA_Population::Step() {}

void GA_Population::Append(GA_Individual* individual) {
  if (individual == nullptr) return;
  try {
    BFindDataTo(*individual, 0, -1);
    InsertCur(individual);
  } catch (...) {
    delete individual;  // the population owned it from the call on
    throw;
  }
}

void GA_Population::Evolve() {
  {
    const ZtArray<GA_Individual*> snapshot(*this);
    const ZtLong n = snapshot.GetLength();
    // n * n fits 32 bits up to 46,340 individuals; beyond, the exact product keeps r % nn == r.
    const std::int64_t nn = static_cast<std::int64_t>(n) * n;
    for (ZtLong i = 0; i < n && IsContinue(); ++i) {
      const int r = zt::platform::Rand15();
      const auto k = static_cast<ZtLong>(std::sqrt(static_cast<double>(r % nn)));
      const GA_Individual* self = snapshot[i];
      const GA_Individual* ranked = snapshot[n - 1 - k];
      const GA_Individual* uniform = snapshot[r % n];
      if (self != nullptr && ranked != nullptr) ranked->Multiply(*self, *this);
      if (self != nullptr && uniform != nullptr) uniform->Multiply(*self, *this);
      Step();
    }
  }

  // DelTail: the owning DelCur (virtual) deletes the last individual, then unlinks it. A DelCur
  // override that removes nothing ends the trimming.
  for (ZtLong length = GetLength(); length > m_maxNum && length > 0; length = GetLength()) {
    DelTail();
    if (GetLength() >= length) break;
  }

  // The product wraps as 32-bit arithmetic does; the quotient truncates towards zero.
  const auto product = static_cast<ZtLong>(static_cast<std::int64_t>(m_maxNum) * m_mutationRatio);
  const ZtLong count = product / 100;
  ZT_REPORT_UNLESS(count <= 0 || GetLength() > 0, "Evolve", "GA_Population", "length", 0);
  for (ZtLong i = 0; i < count && GetLength() > 0 && IsContinue(); ++i) {
    MoveTo(zt::platform::Rand15() % GetLength());
    const GA_Individual* picked = GetCurData();
    // The analyzer assumes a trimming DelCur that deleted an individual but kept its node.
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDelete)
    if (picked != nullptr) Append(picked->Mutation());
    Step();
  }
  ++m_generation;
}
