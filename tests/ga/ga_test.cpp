// tests/ga/ga_test.cpp
//
// The genetic algorithm: sorted insertion, crossover for any draw, the generation loop on given
// draws, copies, and a small problem solved with a fixed seed.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <utility>
#include <vector>

#include "zt/ga/population.h"
#include "zt/platform/random.h"

namespace {

using Pairs = std::vector<std::pair<int, int>>;

void SeedFor(int r) {  // the next draw will be r
  static std::map<int, unsigned> seeds;
  unsigned& s = seeds[r];
  while (s == 0 || (std::srand(s), zt::platform::Rand15()) != r) ++s;
  std::srand(s);
}

struct G : GA_Gene {
  explicit G(int x) : v(x) {}
  GA_Gene* Clone() const override { return new G(*this); }
  int v;
};
int V(const GA_Individual& x, ZtLong i) {
  const auto* g = static_cast<const G*>(x.GetAt(i));
  return g != nullptr ? g->v : -1;
}

Pairs g_matings;  // (partner, individual) fitnesses of every Multiply

// Gene i of kind k holds 100 k + i. Initialize sets the fitness to minus the genes equal to 1
// (lower sorts first); children keep the maker's kind; a mutant flips one gene, or scores 100
// more when there is none. Individuals without genes record their matings and get no children.
class Ind : public GA_Individual {
 public:
  explicit Ind(int f = 0, int k = 0, int genes = 0) : fitness(f), kind(k) {
    for (int i = 0; i < genes; ++i) ZtDynPArray::Append(new G(100 * k + i));
  }
  GA_Individual* New() const override { return new Ind(0, kind); }
  void Initialize() override {
    ++initialized, fitness = 0;
    for (ZtLong i = 0; i < GetLength(); ++i) fitness -= V(*this, i) == 1 ? 1 : 0;
  }
  GA_Individual* Mutation() const override {
    if (GetLength() == 0) return new Ind(fitness + 100);
    auto* m = new Ind(*this);
    static_cast<G&>((*m)(zt::platform::Rand15() % GetLength())).v ^= 1;
    m->Initialize();
    return m;
  }
  ZtLong Multiply(const GA_Individual& o, GA_Population& p) const override {
    g_matings.emplace_back(fitness, Fit(o));
    return GA_Individual::Multiply(o, p);
  }
  bool operator<(const GA_Individual& o) const override { return fitness < Fit(o); }
  bool operator>(const GA_Individual& o) const override { return fitness > Fit(o); }
  static int Fit(const GA_Individual& o) { return static_cast<const Ind&>(o).fitness; }
  int fitness, kind, initialized = 0;
};

// Individuals of the given fitnesses; the run starts on the first wanted draw and each Step seeds
// the next one. IsContinue says yes `allow` times.
class Pop : public GA_Population {
 public:
  explicit Pop(const std::vector<int>& fits = {}, std::vector<int> d = {}) : draws(std::move(d)) {
    for (int f : fits) Append(new Ind(f));
  }
  bool IsContinue() override { return ++asked <= allow; }
  void Step() override {
    ++steps;
    if (next < draws.size()) SeedFor(draws[next++]);
  }
  void Run() {
    g_matings.clear();
    if (!draws.empty()) SeedFor(draws[next++]);
    Evolve();
  }
  std::vector<int> Fits() {
    std::vector<int> out;
    for (MoveToFirst(); !IsOut(); MoveToNext()) out.push_back(Ind::Fit(*GetCurData()));
    return out;
  }
  using GA_Population::m_generation;
  std::vector<int> draws;
  std::size_t next = 0;
  int asked = 0, allow = 1 << 30, steps = 0;
};

TEST(GaTest, DefaultsIdentityAndSortedInsertion) {
  G a(1), b(1);
  EXPECT_TRUE(a == a && a != b && (a < b) == (&a < &b) && (a > b) == (&b < &a));
  GA_Population ties;  // the base orderings tie everything: before element (len - 1) / 2
  EXPECT_TRUE(ties.GetMaxNum() == 100 && ties.GetMutationRatio() == 10);
  for (ZtLong len = 0; len < 6; ++len) {
    auto* x = new GA_Individual;
    ties.Append(x);
    EXPECT_EQ(ties.Find(x, 0, -1), len == 0 ? 0 : (len - 1) / 2) << len;
  }
  ties.Append(nullptr);
  Pop p({5, 1, 9, 3, 7, 0, 10, 5});
  auto* tie = new Ind(5);
  p.Append(tie);  // the search meets the 5 at index 3 first
  EXPECT_EQ(p.Fits(), (std::vector<int>{0, 1, 3, 5, 5, 5, 7, 9, 10}));
  EXPECT_TRUE(ties.GetLength() == 6 && p.Find(tie, 0, -1) == 3);
}

TEST(GaTest, MultiplyCrossesACyclicSegmentForAnyDrawAndSkipsWhatItCannotMake) {
  for (auto [na, nb] : Pairs{{4, 4}, {5, 3}, {3, 5}, {1, 1}, {2, 7}, {6, 2}}) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
      const Ind a(0, 1, na), b(0, 2, nb);
      const Ind& lng = na >= nb ? a : b;
      const Ind& sht = na >= nb ? b : a;
      const int l = sht.GetLength(), m = lng.GetLength();
      ASSERT_GT(l, 0);
      std::srand(seed);
      const int p1 = zt::platform::Rand15() % l, width = l > 1 ? l / 2 : 1;
      std::srand(seed);
      Pop p;
      ASSERT_EQ(a.Multiply(b, p), 2);
      const auto& c1 = static_cast<const Ind&>(p.GetPData(1));  // the children tie: c2 went first
      const auto& c2 = static_cast<const Ind&>(p.GetPData(0));
      ASSERT_TRUE(p.GetLength() == 2 && c1.GetLength() == m && c2.GetLength() == m);
      EXPECT_TRUE(c1.kind == lng.kind && c2.kind == lng.kind);
      EXPECT_TRUE(c1.initialized == 1 && c2.initialized == 1);
      for (int i = 0; i < m; ++i) {
        const bool in = i < l && (i - p1 + l) % l < width;
        EXPECT_EQ(V(c1, i), V(in ? sht : lng, i)) << na << nb << " seed " << seed << " at " << i;
        EXPECT_EQ(V(c2, i), V(in || i >= l ? lng : sht, i));
        EXPECT_TRUE(c1.GetAt(i) != lng.GetAt(i) && c1.GetAt(i) != sht.GetAt(i));
      }
    }
  }
  Pop p;  // a shorter parent without genes or a null New: no children; null genes stay null
  GA_Individual base;  // New gives null
  base.ZtDynPArray::Append(new G(1));
  EXPECT_EQ(
      (std::vector<ZtLong>{Ind(0, 1, 3).Multiply(Ind(), p), base.Multiply(base, p), p.GetLength()}),
      (std::vector<ZtLong>{0, 0, 0}));
  Ind nulls;
  nulls.ZtDynPArray::Append(new GA_Gene);  // clones to null
  EXPECT_EQ(nulls.Multiply(nulls, p), 2);
  EXPECT_TRUE(p.GetPData(0).IsEmptyData(0) && p.GetPData(1).IsEmptyData(0));
}

TEST(GaTest, EvolveDrawsBothPartnersFromOneDraw) {
  Pop p({0, 1, 2, 3}, {5, 15, 16, 3});
  p.SetMutationRatio(0);
  p.Run();
  EXPECT_EQ(g_matings, (Pairs{{1, 0}, {1, 0}, {0, 1}, {3, 1}, {3, 2}, {0, 2}, {2, 3}, {3, 3}}));
  EXPECT_TRUE(p.steps == 4 && p.m_generation == 1);
  Pop({7}).Run();
  EXPECT_EQ(g_matings, (Pairs{{7, 7}, {7, 7}}));
}

TEST(GaTest, EvolveTrimsTheBackThenMutatesPicksFromTheGrowingPopulation) {
  Pop p({0, 1, 2, 3, 4, 5}, {0, 0, 0, 0, 0, 0, 2, 4});  // picks 2 % 4, then 4 % 5
  p.SetMaxNum(4);
  p.SetMutationRatio(50);  // 2 attempts
  p.Run();
  EXPECT_EQ(p.Fits(), (std::vector<int>{0, 1, 2, 3, 102, 202}));
  EXPECT_EQ(p.steps, 8);
  for (ZtLong maxNum : {0, -5}) {  // trimming stops at an empty population
    Pop q({0, 1, 2});
    q.SetMaxNum(maxNum);
    q.Run();
    EXPECT_TRUE(q.GetLength() == 0 && q.m_generation == 1);
  }
}

// Trimming goes through the population's DelCur, which deletes an individual while it is still
// listed: its destructor counts itself.
struct Listed : GA_Individual {
  explicit Listed(std::vector<ZtLong>* seen, const GA_Population* p) : seen(seen), pop(p) {}
  ~Listed() override { seen->push_back(pop->GetLength()); }
  std::vector<ZtLong>* seen;
  const GA_Population* pop;
};
struct CountingDelCur : GA_Population {
  void DelCur() override { ++calls, GA_Population::DelCur(); }
  int calls = 0;
};

TEST(GaTest, TrimmingDeletesThroughDelCurBeforeUnlinking) {
  std::vector<ZtLong> seen;
  CountingDelCur p;
  for (int i = 0; i < 3; ++i) p.Append(new Listed(&seen, &p));
  p.SetMaxNum(1);
  p.Evolve();  // the base New makes no children
  EXPECT_EQ(p.calls, 2);
  EXPECT_EQ(seen, (std::vector<ZtLong>{3, 2}));
}

TEST(GaTest, IsContinueStopsEachPhaseAndAnEmptyPopulationIsSkipped) {
  Pop p({0, 1, 2, 3});
  p.allow = 2;
  p.Run();
  EXPECT_EQ(g_matings.size(), 4U);
  EXPECT_TRUE(p.asked == 4 && p.steps == 2 && p.m_generation == 1);  // mating and mutation asked
  Pop empty;  // 10 mutation attempts on nothing: skipped without asking
  empty.Run();
  EXPECT_TRUE(empty.asked == 0 && empty.m_generation == 1);
}

TEST(GaTest, CopiesCloneIndividualsAsTheirClassAndTheirGenes) {
  Pop p;
  p.Append(new Ind(3, 1, 2)), p.SetMaxNum(7);
  GA_Population copy(p);
  const auto* c = dynamic_cast<const Ind*>(copy.GetAt(0));
  ASSERT_TRUE(c != nullptr && c != p.GetAt(0) && copy.GetMaxNum() == 7);
  EXPECT_TRUE(c->initialized == 1 && V(*c, 1) == 101 && c->GetAt(1) != p.GetPData(0).GetAt(1));
  const GA_Population& same = copy;
  copy = same;
  EXPECT_EQ(copy.GetLength(), 1);
}

TEST(GaTest, EvolutionReachesTheOptimumOfASmallProblem) {
  constexpr int kBits = 40;  // the optimum: every gene 1, fitness -kBits
  struct Search : GA_Population {
    bool IsContinue() override { return Ind::Fit(GetPData(0)) > -kBits; }
  } s;
  s.SetMaxNum(30);
  s.SetMutationRatio(20);
  std::srand(12345);
  for (int i = 0; i < 30; ++i) {
    auto* x = new Ind;
    for (int b = 0; b < kBits; ++b) x->ZtDynPArray::Append(new G(zt::platform::Rand15() & 1));
    x->Initialize();
    s.Append(x);
  }
  for (int generation = 0; generation < 300 && s.IsContinue(); ++generation) s.Evolve();
  EXPECT_EQ(Ind::Fit(s.GetPData(0)), -kBits);
}

}  // namespace
