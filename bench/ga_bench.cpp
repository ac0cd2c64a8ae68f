// Evolves a population of 100 individuals of 64 genes for 100 generations. The client computes
// each individual's fitness in Initialize (the sum of squares of its genes, smaller is better).
// Reports generations per second and the allocations one generation makes. The standard side is
// the same evolution written directly on std::vector, as a user without the library would: the
// same draws, crossover, mutation, sorted insertion and trimming, checked to end with the same
// fitnesses.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

#include "zt/ga/population.h"
#include "zt/platform/random.h"

namespace {

long g_allocations = 0;  // every allocation of the process, the library's included

void* Allocate(std::size_t size) {
  ++g_allocations;
  if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
  throw std::bad_alloc();
}

void Release(void* p) noexcept { std::free(p); }

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* p) noexcept { Release(p); }
void operator delete[](void* p) noexcept { Release(p); }
void operator delete(void* p, std::size_t /*size*/) noexcept { Release(p); }
void operator delete[](void* p, std::size_t /*size*/) noexcept { Release(p); }

namespace {

constexpr int kIndividuals = 100;
constexpr int kGenes = 64;
constexpr int kGenerations = 100;

/// The first individuals' genes, drawn after std::srand(1): the same on both sides.
double InitialGene() { return zt::platform::Rand15() % 2001 - 1000; }

/// Sum of squares: the fitness both sides compute.
template <class Genes>
double SumOfSquares(const Genes& genes, int count) {
  double sum = 0;
  for (int i = 0; i < count; ++i) sum += genes(i) * genes(i);
  return sum;
}

// --- zt: genes, individuals and the population of the library ---

struct Real : GA_Gene {
  explicit Real(double x) : v(x) {}
  GA_Gene* Clone() const override { return new Real(*this); }
  double v;
};

class Point : public GA_Individual {
 public:
  GA_Individual* New() const override { return new Point; }
  void Initialize() override {
    m_fitness =
        SumOfSquares([this](int i) { return static_cast<const Real*>(GetAt(i))->v; }, GetLength());
  }
  GA_Individual* Mutation() const override {
    auto* m = new Point(*this);
    static_cast<Real&>((*m)(zt::platform::Rand15() % kGenes)).v *= 0.5;
    m->Initialize();
    return m;
  }
  bool operator<(const GA_Individual& o) const override { return m_fitness < Of(o); }
  bool operator>(const GA_Individual& o) const override { return m_fitness > Of(o); }
  double Fitness() const { return m_fitness; }

 private:
  static double Of(const GA_Individual& o) { return static_cast<const Point&>(o).m_fitness; }
  double m_fitness = 0;
};

/// The first population, after std::srand(1).
void Populate(GA_Population& population) {
  population.SetMaxNum(kIndividuals);
  for (int i = 0; i < kIndividuals; ++i) {
    auto* p = new Point;
    for (int g = 0; g < kGenes; ++g) p->ZtDynPArray::Append(new Real(InitialGene()));
    p->Initialize();
    population.Append(p);
  }
}

std::vector<double> Fitnesses(const GA_Population& population) {
  std::vector<double> f;
  for (auto* const* p = population.GetFirst(); p != nullptr; p = population.GetNext(p)) {
    f.push_back(static_cast<const Point*>(*p)->Fitness());
  }
  return f;
}

// --- std: the same evolution on std::vector ---

struct Individual {
  std::vector<double> genes;
  double fitness = 0;
  void Initialize() {
    fitness = SumOfSquares([this](int i) { return genes[static_cast<std::size_t>(i)]; },
                           static_cast<int>(genes.size()));
  }
};

using Population = std::vector<std::unique_ptr<Individual>>;

/// Where the population's binary search puts an individual of fitness f: before the first one
/// when f is smaller, after the last when greater, otherwise the place the bisection ends on
/// (before an equal individual it meets).
std::size_t InsertionPoint(const Population& population, double f) {
  if (population.empty()) return 0;
  auto fitness = [&population](std::int64_t i) {
    return population[static_cast<std::size_t>(i)]->fitness;
  };
  std::int64_t from = 0;
  std::int64_t to = static_cast<std::int64_t>(population.size()) - 1;
  if (f < fitness(from)) return 0;
  if (f > fitness(to)) return population.size();
  std::int64_t probe = to;
  while (from < to) {
    probe = (from + to) / 2;
    if (f > fitness(probe)) {
      from = probe + 1;
    } else if (f < fitness(probe)) {
      to = probe - 1;
    } else {
      return static_cast<std::size_t>(probe);
    }
  }
  if (from != to) return static_cast<std::size_t>(probe);
  return static_cast<std::size_t>(f > fitness(from) ? from + 1 : from);
}

void Insert(Population& population, std::unique_ptr<Individual> individual) {
  const std::size_t at = InsertionPoint(population, individual->fitness);
  population.insert(population.begin() + static_cast<std::ptrdiff_t>(at), std::move(individual));
}

/// Two-point crossover over a cyclic segment of half the genes (both parents have kGenes).
void Multiply(const Individual& a, const Individual& b, Population& population) {
  auto c1 = std::make_unique<Individual>();
  auto c2 = std::make_unique<Individual>();
  c1->genes.resize(a.genes.size());
  c2->genes.resize(a.genes.size());
  const int l = static_cast<int>(b.genes.size());
  const int p1 = zt::platform::Rand15() % l;
  const int p2 = l == 1 ? 0 : (p1 + l / 2 - 1) % l;
  for (int i = 0; i < l; ++i) {
    const bool swap = p1 <= p2 ? p1 <= i && i <= p2 : i >= p1 || i <= p2;
    const auto k = static_cast<std::size_t>(i);
    c1->genes[k] = (swap ? b : a).genes[k];
    c2->genes[k] = (swap ? a : b).genes[k];
  }
  c1->Initialize();
  c2->Initialize();
  Insert(population, std::move(c1));
  Insert(population, std::move(c2));
}

void Evolve(Population& population) {
  const std::vector<const Individual*> snapshot = [&population] {
    std::vector<const Individual*> s;
    for (const auto& p : population) s.push_back(p.get());
    return s;
  }();
  const auto n = static_cast<std::int64_t>(snapshot.size());
  for (std::int64_t i = 0; i < n; ++i) {
    const int r = zt::platform::Rand15();
    const auto k = static_cast<std::int64_t>(std::sqrt(static_cast<double>(r % (n * n))));
    const Individual& self = *snapshot[static_cast<std::size_t>(i)];
    Multiply(*snapshot[static_cast<std::size_t>(n - 1 - k)], self, population);
    Multiply(*snapshot[static_cast<std::size_t>(r % n)], self, population);
  }
  population.resize(std::min(population.size(), std::size_t{kIndividuals}));
  for (int m = 0; m < kIndividuals * 10 / 100 && !population.empty(); ++m) {
    const Individual& picked =
        *population[static_cast<std::size_t>(zt::platform::Rand15()) % population.size()];
    auto mutant = std::make_unique<Individual>(picked);
    mutant->genes[static_cast<std::size_t>(zt::platform::Rand15() % kGenes)] *= 0.5;
    mutant->Initialize();
    Insert(population, std::move(mutant));
  }
}

void Populate(Population& population) {
  for (int i = 0; i < kIndividuals; ++i) {
    auto p = std::make_unique<Individual>();
    for (int g = 0; g < kGenes; ++g) p->genes.push_back(InitialGene());
    p->Initialize();
    Insert(population, std::move(p));
  }
}

std::vector<double> Fitnesses(const Population& population) {
  std::vector<double> f;
  for (const auto& p : population) f.push_back(p->fitness);
  return f;
}

/// True when both sides end a few generations with the same fitnesses in the same order.
bool SameEvolution() {
  std::srand(1);
  GA_Population library;
  Populate(library);
  std::srand(1);
  Population plain;
  Populate(plain);
  for (int g = 0; g < 5; ++g) {
    std::srand(static_cast<unsigned>(g + 2));
    library.Evolve();
    std::srand(static_cast<unsigned>(g + 2));
    Evolve(plain);
  }
  return Fitnesses(library) == Fitnesses(plain);
}

/// Times kGenerations of `evolve` on a population made by `populate` after std::srand(1), its
/// destruction included, as a client's would be; the setup is not timed.
template <class P, class Evolve>
void Run(benchmark::State& state, Evolve evolve) {
  long allocations = 0;
  for (auto _ : state) {
    state.PauseTiming();
    std::srand(1);
    auto population = std::make_unique<P>();
    Populate(*population);
    const long before = g_allocations;
    state.ResumeTiming();
    for (int g = 0; g < kGenerations; ++g) evolve(*population);
    state.PauseTiming();
    allocations += g_allocations - before;
    benchmark::DoNotOptimize(population.get());
    state.ResumeTiming();
    population.reset();
  }
  const double generations = static_cast<double>(state.iterations()) * kGenerations;
  state.counters["generations/s"] = benchmark::Counter(generations, benchmark::Counter::kIsRate);
  state.counters["allocations/generation"] = static_cast<double>(allocations) / generations;
}

void EvolveZt(benchmark::State& state) {
  Run<GA_Population>(state, [](GA_Population& p) { p.Evolve(); });
}

void EvolveStd(benchmark::State& state) {
  if (!SameEvolution()) {
    state.SkipWithError("the std::vector evolution differs from the library's");
    return;
  }
  Run<Population>(state, [](Population& p) { Evolve(p); });
}

// Named as bench/pair.h names a pair, for scripts/bench.sh.
BENCHMARK(EvolveZt)->Name("GA.Evolve100Generations/zt")->Unit(benchmark::kMillisecond);
BENCHMARK(EvolveStd)->Name("GA.Evolve100Generations/std")->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
