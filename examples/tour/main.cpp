// examples/tour: a genetic-algorithm client that looks for a short round trip through cities.
//
// Each gene is a random key; an individual's tour visits the cities in the order of their keys,
// so every crossover of two key vectors is again a valid tour. Mutants reverse a stretch of the
// tour (a 2-opt move). The run stops when the best length has not improved for --patience
// generations, and the result is set against a nearest-neighbour tour of the same cities.
//
//   zt_demo_tour [--seed N] [--cities N] [--patience N]
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "zt/ga/gene.h"
#include "zt/ga/individual.h"
#include "zt/ga/population.h"

namespace {

struct City {
  double x;
  double y;
};

double Distance(const City& a, const City& b) { return std::hypot(a.x - b.x, a.y - b.y); }

double TourLength(const std::vector<City>& cities, const std::vector<int>& order) {
  double length = 0;
  for (std::size_t i = 0; i < order.size(); ++i) {
    length += Distance(cities[order[i]], cities[order[(i + 1) % order.size()]]);
  }
  return length;
}

/// A draw in [0, 1) from the library's generator (std::rand, steered by std::srand).
double Uniform() { return std::rand() / (RAND_MAX + 1.0); }

/// The random key of one city.
class Key : public GA_Gene {
 public:
  explicit Key(double value) : value_(value) {}
  GA_Gene* Clone() const override { return new Key(*this); }
  double value() const { return value_; }

 private:
  double value_;
};

/// A tour: one key per city; the cities are visited in the order of their keys.
class Tour : public GA_Individual {
 public:
  explicit Tour(const std::vector<City>* cities) : cities_(cities) {}

  static Tour* Random(const std::vector<City>* cities) {
    auto* tour = new Tour(cities);
    for (std::size_t i = 0; i < cities->size(); ++i) tour->Append(new Key(Uniform()));
    tour->Initialize();
    return tour;
  }

  GA_Individual* New() const override { return new Tour(cities_); }
  /// Children and mutants get their length once their keys are in place.
  void Initialize() override { length_ = TourLength(*cities_, Order()); }
  /// A copy whose tour runs backwards between two random positions.
  GA_Individual* Mutation() const override {
    const std::vector<int> order = Order();
    std::vector<double> keys(order.size());
    for (std::size_t i = 0; i < order.size(); ++i) keys[i] = KeyOf(order[i]);
    std::size_t a = static_cast<std::size_t>(std::rand()) % order.size();
    std::size_t b = static_cast<std::size_t>(std::rand()) % order.size();
    if (a > b) std::swap(a, b);
    // City order[a + t] takes the key of position b - t: the stretch a..b is reversed.
    std::vector<double> fresh(order.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
      fresh[order[i]] = keys[i >= a && i <= b ? a + b - i : i];
    }
    auto* mutant = new Tour(cities_);
    for (double k : fresh) mutant->Append(new Key(k));
    mutant->Initialize();
    return mutant;
  }
  bool operator<(const GA_Individual& other) const override {
    return length_ < static_cast<const Tour&>(other).length_;
  }
  bool operator>(const GA_Individual& other) const override {
    return length_ > static_cast<const Tour&>(other).length_;
  }

  double length() const { return length_; }
  /// The cities in visiting order.
  std::vector<int> Order() const {
    std::vector<int> order(static_cast<std::size_t>(GetLength()));
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [this](int a, int b) { return KeyOf(a) < KeyOf(b); });
    return order;
  }

 private:
  double KeyOf(int city) const { return static_cast<const Key*>(GetAt(city))->value(); }

  const std::vector<City>* cities_;
  double length_ = 0;
};

/// Greedy tour: always on to the nearest city not yet visited.
double NearestNeighbourLength(const std::vector<City>& cities) {
  std::vector<int> order{0};
  std::vector<bool> seen(cities.size());
  seen[0] = true;
  while (order.size() < cities.size()) {
    int best = -1;
    for (std::size_t c = 0; c < cities.size(); ++c) {
      if (!seen[c] && (best < 0 || Distance(cities[order.back()], cities[c]) <
                                       Distance(cities[order.back()], cities[best]))) {
        best = static_cast<int>(c);
      }
    }
    seen[best] = true;
    order.push_back(best);
  }
  return TourLength(cities, order);
}

void ShowProgress(int generation, int idle, int patience, double best) {
  constexpr int kWidth = 30;
  const int filled = idle * kWidth / patience;
  std::printf("\r[%s%s] generation %5d  best %8.2f", std::string(filled, '#').c_str(),
              std::string(kWidth - filled, '.').c_str(), generation, best);
  std::fflush(stdout);
}

bool ReadOption(int argc, char** argv, int& i, const char* name, int& out) {
  if (std::strcmp(argv[i], name) != 0 || i + 1 >= argc) return false;
  out = std::atoi(argv[++i]);
  return true;
}

/// Length of the best tour: the population keeps its best individual first.
double BestLength(const GA_Population& population) {
  return static_cast<const Tour&>(population.GetPData(0)).length();
}

}  // namespace

int main(int argc, char** argv) {
  int seed = 1;
  int count = 50;
  int patience = 150;
  for (int i = 1; i < argc; ++i) {
    if (!ReadOption(argc, argv, i, "--seed", seed) &&
        !ReadOption(argc, argv, i, "--cities", count) &&
        !ReadOption(argc, argv, i, "--patience", patience)) {
      std::fprintf(stderr, "usage: %s [--seed N] [--cities N] [--patience N]\n", argv[0]);
      return 2;
    }
  }
  if (count < 3 || count > 10000 || patience < 1) {
    std::fprintf(stderr, "need 3 to 10000 cities and a patience of at least 1\n");
    return 2;
  }

  std::mt19937 place(static_cast<unsigned>(seed));
  std::uniform_real_distribution<double> coordinate(0, 100);
  std::vector<City> cities(static_cast<std::size_t>(count));
  for (City& c : cities) c = {coordinate(place), coordinate(place)};
  std::srand(static_cast<unsigned>(seed));

  GA_Population population;
  population.SetMaxNum(200);
  population.SetMutationRatio(50);  // 100 mutants a generation
  for (int i = 0; i < 200; ++i) population.Append(Tour::Random(&cities));

  std::printf("%d cities, seed %d: evolving until %d generations bring no improvement\n", count,
              seed, patience);
  double best = BestLength(population);
  int generation = 0;
  for (int idle = 0; idle < patience; ++generation) {
    population.Evolve();
    const double now = BestLength(population);
    idle = now < best - 1e-9 ? 0 : idle + 1;
    best = std::min(best, now);
    ShowProgress(generation + 1, idle, patience, best);
  }
  const double greedy = NearestNeighbourLength(cities);
  std::printf("\nbest tour after %d generations: %.2f\n", generation, best);
  std::printf("nearest-neighbour tour:            %.2f (the evolved tour is %.1f%% %s)\n", greedy,
              std::fabs(100.0 * (best - greedy) / greedy), best <= greedy ? "shorter" : "longer");
  return 0;
}
