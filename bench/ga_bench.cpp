// Evolves a population of 100 individuals of 64 genes for 100 generations. The client computes
// each individual's fitness in Initialize (the sum of squares of its genes, smaller is better).
// Reports generations per second and the allocations one generation makes.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <new>

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

struct Real : GA_Gene {
  explicit Real(double x) : v(x) {}
  GA_Gene* Clone() const override { return new Real(*this); }
  double v;
};

class Point : public GA_Individual {
 public:
  GA_Individual* New() const override { return new Point; }
  void Initialize() override {
    m_fitness = 0;
    for (ZtLong i = 0; i < GetLength(); ++i) {
      const double v = static_cast<const Real*>(GetAt(i))->v;
      m_fitness += v * v;
    }
  }
  GA_Individual* Mutation() const override {
    auto* m = new Point(*this);
    static_cast<Real&>((*m)(zt::platform::Rand15() % kGenes)).v *= 0.5;
    m->Initialize();
    return m;
  }
  bool operator<(const GA_Individual& o) const override { return m_fitness < Of(o); }
  bool operator>(const GA_Individual& o) const override { return m_fitness > Of(o); }

 private:
  static double Of(const GA_Individual& o) { return static_cast<const Point&>(o).m_fitness; }
  double m_fitness = 0;
};

void BM_Evolve(benchmark::State& state) {
  long allocations = 0;
  for (auto _ : state) {
    state.PauseTiming();
    std::srand(1);
    GA_Population population;
    population.SetMaxNum(kIndividuals);
    for (int i = 0; i < kIndividuals; ++i) {
      auto* p = new Point;
      for (int g = 0; g < kGenes; ++g) {
        p->ZtDynPArray::Append(new Real(zt::platform::Rand15() % 2001 - 1000));
      }
      p->Initialize();
      population.Append(p);
    }
    const long before = g_allocations;
    state.ResumeTiming();
    for (int g = 0; g < kGenerations; ++g) population.Evolve();
    state.PauseTiming();
    allocations += g_allocations - before;
    benchmark::DoNotOptimize(population.GetFirst());
    state.ResumeTiming();  // the population's destruction is timed, as a client's would be
  }
  const double generations = static_cast<double>(state.iterations()) * kGenerations;
  state.counters["generations/s"] = benchmark::Counter(generations, benchmark::Counter::kIsRate);
  state.counters["allocations/generation"] = static_cast<double>(allocations) / generations;
}
BENCHMARK(BM_Evolve)->Name("GA.Evolve100Generations")->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
