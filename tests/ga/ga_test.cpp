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

// Seeds std::rand so that the next draw is r.
void SeedFor(int r) {
  static std::map<int, unsigned> found;
  unsigned& seed = found[r];
  if (seed == 0) {
    for (seed = 1; seed < (1U << 26); ++seed) {
      std::srand(seed);
      if (zt::platform::Rand15() == r) break;
    }
  }
  std::srand(seed);
}

struct IdGene : GA_Gene {
  explicit IdGene(int v) : id(v) {}
  GA_Gene* Clone() const override { return new IdGene(*this); }
  int id;
};

int IdAt(const GA_Individual& x, ZtLong i) {
  const auto* g = static_cast<const IdGene*>(x.GetAt(i));
  return g != nullptr ? g->id : -1;
}

// Ordered by fitness; children and mutants keep the maker's kind.
class Ind : public GA_Individual {
 public:
  explicit Ind(int f = 0, int k = 0, int genes = 0) : fitness(f), kind(k) {
    for (int i = 0; i < genes; ++i) ZtDynPArray::Append(new IdGene(k * 100 + i));
  }
  GA_Individual* New() const override { return new Ind(0, kind); }
  void Initialize() override { ++initialized; }
  GA_Individual* Mutation() const override { return new Ind(fitness + 100, kind); }
  bool operator<(const GA_Individual& o) const override { return fitness < Fit(o); }
  bool operator>(const GA_Individual& o) const override { return fitness > Fit(o); }
  static int Fit(const GA_Individual& o) { return static_cast<const Ind&>(o).fitness; }
  int fitness, kind, initialized = 0;
};

std::vector<std::pair<int, int>> g_matings;  // (partner, individual) fitnesses

// Mates without children, recording who mated with whom.
struct Recorder : Ind {
  using Ind::Ind;
  ZtLong Multiply(const GA_Individual& o, GA_Population& /*p*/) const override {
    g_matings.emplace_back(fitness, Fit(o));
    return 0;
  }
};

// Steers the draws: each Step seeds the next wanted draw; IsContinue allows `allow` answers.
class Pop : public GA_Population {
 public:
  bool IsContinue() override { return ++asked <= allow; }
  void Step() override {
    ++steps;
    if (next < draws.size()) SeedFor(draws[next++]);
  }
  void Start() {
    g_matings.clear();
    if (!draws.empty()) SeedFor(draws[next++]);
    Evolve();
  }
  ZtLong Generation() const { return m_generation; }
  std::vector<int> Fitnesses() {
    std::vector<int> out;
    for (MoveToFirst(); !IsOut(); MoveToNext()) out.push_back(Ind::Fit(*GetCurData()));
    return out;
  }
  std::vector<int> draws;
  std::size_t next = 0;
  int asked = 0, allow = 1 << 30, steps = 0;
};

TEST(GaTest, DefaultsAndGeneIdentity) {
  GA_Population p;
  EXPECT_EQ(p.GetMaxNum(), 100);
  EXPECT_EQ(p.GetMutationRatio(), 10);
  IdGene a(1), b(1);
  EXPECT_TRUE(a == a && a != b && (a < b) == (&a < &b) && (a > b) == (&b < &a));
  EXPECT_EQ(GA_Gene().Clone(), nullptr);
}

TEST(GaTest, AppendPlacesTiesBeforeTheMiddleAndOrdersByFitness) {
  GA_Population ties;  // the base orderings tie everything
  for (ZtLong len = 0; len < 6; ++len) {
    auto* x = new GA_Individual;
    ties.Append(x);
    EXPECT_EQ(ties.Find(x, 0, -1), len == 0 ? 0 : (len - 1) / 2) << "length " << len;
  }
  ties.Append(nullptr);
  EXPECT_EQ(ties.GetLength(), 6);

  Pop p;
  for (int f : {5, 1, 9, 3, 7, 0, 10, 5}) p.Append(new Ind(f));
  EXPECT_EQ(p.Fitnesses(), (std::vector<int>{0, 1, 3, 5, 5, 7, 9, 10}));
  auto* tie = new Ind(5, 1);
  p.Append(tie);  // the search meets the 5 at index 3 first
  EXPECT_EQ(p.Find(tie, 0, -1), 3);
}

TEST(GaTest, MultiplyMakesTwoCrossedChildrenForAnyDraw) {
  const std::pair<int, int> lengths[] = {{4, 4}, {5, 3}, {3, 5}, {1, 1}, {2, 7}, {6, 2}};
  for (auto [na, nb] : lengths) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
      const Ind a(0, 1, na), b(0, 2, nb);
      const Ind& longer = na >= nb ? a : b;
      const Ind& shorter = na >= nb ? b : a;
      const int m = longer.GetLength(), l = shorter.GetLength();
      std::srand(seed);
      const int p1 = zt::platform::Rand15() % l, width = l / 2 > 0 ? l / 2 : 1;
      std::srand(seed);
      Pop p;
      ASSERT_EQ(a.Multiply(b, p), 2);
      ASSERT_EQ(p.GetLength(), 2);
      for (ZtLong c = 0; c < 2; ++c) {
        const auto& child = static_cast<const Ind&>(*p.GetAt(c));
        EXPECT_EQ(child.kind, longer.kind);
        EXPECT_EQ(child.initialized, 1);
        ASSERT_EQ(child.GetLength(), m);
      }
      // Children tie, so the second went before the first.
      const Ind& c1 = static_cast<const Ind&>(*p.GetAt(1));
      const Ind& c2 = static_cast<const Ind&>(*p.GetAt(0));
      for (int i = 0; i < m; ++i) {
        const bool inSegment = i < l && (i - p1 + l) % l < width;
        EXPECT_EQ(IdAt(c1, i), IdAt(inSegment ? shorter : longer, i)) << na << nb << seed << i;
        EXPECT_EQ(IdAt(c2, i), IdAt(inSegment || i >= l ? longer : shorter, i));
        EXPECT_TRUE(c1.GetAt(i) != longer.GetAt(i) && c1.GetAt(i) != shorter.GetAt(i));
      }
    }
  }
}

TEST(GaTest, MultiplyWithoutGenesOrChildrenAddsNothing) {
  Pop p;
  const Ind empty(0, 1), full(0, 2, 3);
  EXPECT_EQ(full.Multiply(empty, p), 0);
  GA_Individual base;  // New gives null
  base.ZtDynPArray::Append(new GA_Gene);
  EXPECT_EQ(base.Multiply(base, p), 0);
  EXPECT_EQ(p.GetLength(), 0);
  Ind nullGenes(0, 1);
  nullGenes.ZtDynPArray::Append(new GA_Gene);  // clones to null
  EXPECT_EQ(nullGenes.Multiply(nullGenes, p), 2);
  EXPECT_TRUE(p.GetPData(0).IsEmptyData(0) && p.GetPData(1).IsEmptyData(0));
}

TEST(GaTest, EvolveChoosesPartnersFromOneDraw) {
  Pop p;
  for (int f = 0; f < 4; ++f) p.Append(new Recorder(f));
  p.SetMutationRatio(0);
  p.draws = {5, 15, 16, 3};
  p.Start();
  const std::vector<std::pair<int, int>> want = {{1, 0}, {1, 0}, {0, 1}, {3, 1},
                                                 {3, 2}, {0, 2}, {2, 3}, {3, 3}};
  EXPECT_EQ(g_matings, want);
  EXPECT_EQ(p.steps, 4);
  EXPECT_EQ(p.Generation(), 1);

  Pop single;
  single.Append(new Recorder(7));
  single.SetMutationRatio(0);
  single.Start();
  EXPECT_EQ(g_matings, (std::vector<std::pair<int, int>>{{7, 7}, {7, 7}}));
}

TEST(GaTest, EvolveTrimsTheBackThenMutatesPicksFromTheGrowingPopulation) {
  Pop p;
  for (int f = 0; f < 6; ++f) p.Append(new Recorder(f));
  p.SetMaxNum(4);
  p.SetMutationRatio(50);              // 2 attempts
  p.draws = {0, 0, 0, 0, 0, 0, 2, 4};  // picks 2 % 4, then 4 % 5: the first mutant
  p.Start();
  EXPECT_EQ(p.Fitnesses(), (std::vector<int>{0, 1, 2, 3, 102, 202}));
  EXPECT_EQ(p.steps, 8);

  for (ZtLong maxNum : {0, -5}) {  // trimming stops at an empty population
    Pop q;
    for (int f = 0; f < 3; ++f) q.Append(new Recorder(f));
    q.SetMaxNum(maxNum);
    q.Start();
    EXPECT_EQ(q.GetLength(), 0);
    EXPECT_EQ(q.Generation(), 1);
  }
}

TEST(GaTest, IsContinueStopsEachPhaseAndEmptyPopulationsAreSkipped) {
  Pop p;
  for (int f = 0; f < 4; ++f) p.Append(new Recorder(f));
  p.allow = 2;
  p.Start();
  EXPECT_EQ(g_matings.size(), 4U);
  EXPECT_EQ(p.asked, 4);  // two yes, the mating's no, the mutation's no
  EXPECT_EQ(p.steps, 2);
  EXPECT_EQ(p.Generation(), 1);

  Pop empty;  // 10 mutation attempts on nothing: skipped without asking
  empty.Start();
  EXPECT_EQ(empty.asked, 0);
  EXPECT_EQ(empty.Generation(), 1);
}

TEST(GaTest, CopiesCloneIndividualsAsTheirClassAndGenes) {
  Pop p;
  p.Append(new Ind(3, 1, 2));
  p.SetMaxNum(7);
  GA_Population copy(p);
  const auto* c = dynamic_cast<const Ind*>(copy.GetAt(0));
  ASSERT_NE(c, nullptr);
  EXPECT_NE(c, p.GetAt(0));
  EXPECT_EQ(c->initialized, 1);
  EXPECT_EQ(copy.GetMaxNum(), 7);
  EXPECT_TRUE(IdAt(*c, 1) == 101 && c->GetAt(1) != p.GetPData(0).GetAt(1));
  const GA_Population& same = copy;
  copy = same;
  EXPECT_EQ(copy.GetLength(), 1);
}

// OneMax: individuals of bits, fitter the more ones they hold; the fitter compares less.
struct Bit : GA_Gene {
  explicit Bit(bool v) : on(v) {}
  GA_Gene* Clone() const override { return new Bit(*this); }
  bool on;
};

class OneMax : public Ind {
 public:
  GA_Individual* New() const override { return new OneMax; }
  void Initialize() override {
    fitness = 0;
    for (ZtLong i = 0; i < GetLength(); ++i) fitness -= static_cast<const Bit*>(GetAt(i))->on;
  }
  GA_Individual* Mutation() const override {
    auto* m = new OneMax(*this);
    auto& bit = static_cast<Bit&>((*m)(zt::platform::Rand15() % GetLength()));
    bit.on = !bit.on;
    m->Initialize();
    return m;
  }
};

class Search : public GA_Population {
 public:
  bool IsContinue() override { return GetLength() == 0 || Ind::Fit(GetPData(0)) > -kBits; }
  static constexpr int kBits = 40;
};

TEST(GaTest, EvolutionReachesTheOptimumOfASmallProblem) {
  std::srand(12345);
  Search s;
  s.SetMaxNum(30);
  s.SetMutationRatio(20);
  for (int i = 0; i < 30; ++i) {
    auto* x = new OneMax;
    for (int b = 0; b < Search::kBits; ++b)
      x->ZtDynPArray::Append(new Bit(zt::platform::Rand15() & 1));
    x->Initialize();
    s.Append(x);
  }
  int generations = 0;
  while (s.IsContinue() && generations < 300) {
    s.Evolve();
    ++generations;
  }
  EXPECT_EQ(Ind::Fit(s.GetPData(0)), -Search::kBits) << "after " << generations << " generations";
  EXPECT_LE(s.GetLength(), 30 + 6);
}

}  // namespace
