#include "zt/ga/individual.h"

#include <memory>

#include "zt/checked.h"
#include "zt/containers/array.h"  // the explicit instantiations need every member
#include "zt/ga/population.h"
#include "zt/platform/random.h"

template class ZT_INSTANTIATION_API ZtDynArrayBase<GA_Gene*>;
template class ZT_INSTANTIATION_API ZtDynArray<GA_Gene*>;
template class ZT_INSTANTIATION_API ZtDynPArray<GA_Gene>;

namespace {

// A clone of gene `g` through its Clone, or null for an empty place.
GA_Gene* CloneGene(const GA_Gene* g) {
  return g != nullptr ? ZtCloner<GA_Gene>::Clone(*g) : nullptr;
}

// Whether position i lies in the cyclic segment from p1 to p2 inclusive.
bool InSegment(ZtLong i, ZtLong p1, ZtLong p2) {
  return p1 <= p2 ? p1 <= i && i <= p2 : i >= p1 || i <= p2;
}

}  // namespace

GA_Individual::~GA_Individual() = default;

GA_Individual* GA_Individual::New() const { return nullptr; }

void GA_Individual::Initialize() {}

GA_Individual* GA_Individual::Mutation() const { return nullptr; }

bool GA_Individual::operator<(const GA_Individual& /*other*/) const { return false; }

bool GA_Individual::operator>(const GA_Individual& /*other*/) const { return false; }

ZtLong GA_Individual::Multiply(const GA_Individual& other, GA_Population& population) const {
  if (other.GetLength() > GetLength()) return other.Multiply(*this, population);
  const GA_Individual& a = *this;  // the longer parent (or of equal length)
  const GA_Individual& b = other;
  const ZtLong m = a.GetLength();
  const ZtLong l = b.GetLength();
  // No genes to draw a crossover point from.
  if (!ZT_IN_CONTRACT(l != 0, "Multiply", "GA_Individual", "length", l)) return 0;

  std::unique_ptr<GA_Individual> c1(a.New());
  std::unique_ptr<GA_Individual> c2(a.New());
  if (!ZT_IN_CONTRACT(c1 != nullptr && c2 != nullptr, "Multiply", "GA_Individual", "child pointer",
                      0)) {
    return 0;
  }
  c1->SetLength(m, false);
  c2->SetLength(m, false);

  const ZtLong p1 = zt::platform::Rand15() % l;
  const ZtLong p2 = l == 1 ? 0 : (p1 + l / 2 - 1) % l;
  for (ZtLong i = 0; i < l; ++i) {
    const bool swap = InSegment(i, p1, p2);
    (*c1)[i] = CloneGene((swap ? b : a).GetAt(i));
    (*c2)[i] = CloneGene((swap ? a : b).GetAt(i));
  }
  for (ZtLong i = l; i < m; ++i) {
    (*c1)[i] = CloneGene(a.GetAt(i));
    (*c2)[i] = CloneGene(a.GetAt(i));
  }
  c1->Initialize();
  c2->Initialize();
  population.Append(c1.release());
  population.Append(c2.release());
  return 2;
}
