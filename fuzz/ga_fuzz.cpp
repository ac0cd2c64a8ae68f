// fuzz/ga_fuzz.cpp
//
// GA_Population::Append, GA_Individual::Multiply and GA_Population::Evolve against a model of
// their draws and calls. Every hook of the client classes (Clone, New, Initialize, Mutation,
// Multiply, IsContinue, Step and the individuals' destructor) writes a line to a log; the model
// writes the lines the generation loop must cause, in order, replaying the same draws from
// std::rand after the same std::srand. After every call the logs, the population's order, each
// individual's genes, the cursor and the counters must match. Individuals order by a small key
// (ties are common) or, when the first byte says so, tie always as the base class's orderings do.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "fuzz/driver.h"
#include "zt/ga/population.h"
#include "zt/platform/random.h"

namespace {

using zt::fuzz::Input;
using zt::fuzz::Same;

// Trimming takes the last individual off the list and then deletes it, so its destructor no longer
// counts it in the population; deleting it through the list's DelCur counts it. Set to false
// once trimming is DelTail.
constexpr bool kAwaitingFixTrimDeletesAfterUnlinking = false;

// Gene v's Clone gives null when v % 5 is 4; Initialize sets the key to the sum of the genes
// modulo 7; an individual whose id is a multiple of 3 has no mutant.
bool ClonesToNull(int v) { return v % 5 == 4; }
int KeyOf(const std::vector<int>& genes) {
  int sum = 0;
  for (int v : genes) sum += v < 0 ? 0 : v;
  return sum % 7;
}

// The model's individual; a gene of -1 is an empty place.
struct Model {
  int id, key;
  bool barren;  // New gives null
  std::vector<int> genes;
};

// What the library's side and the model's side both keep: the log, the next id, the answers
// of IsContinue.
struct Side {
  std::string log;
  int nextId = 0, asked = 0;
  void Line(char what, int a, int b = -1) {
    log += what + std::to_string(a) + (b < 0 ? "" : "," + std::to_string(b)) + ' ';
  }
};

struct World;

class Gene : public GA_Gene {
 public:
  Gene(Side* side, int v) : m_side(side), v(v) {}
  GA_Gene* Clone() const override {
    m_side->Line('C', v);
    return ClonesToNull(v) ? nullptr : new Gene(m_side, v);
  }
  Side* m_side;
  int v;
};

class Ind : public GA_Individual {
 public:
  Ind(World* w, int id, int key, bool barren) : w(w), id(id), key(key), barren(barren) {}
  ~Ind() override;
  GA_Individual* New() const override;
  void Initialize() override;
  GA_Individual* Mutation() const override;
  ZtLong Multiply(const GA_Individual& other, GA_Population& population) const override;
  bool operator<(const GA_Individual& o) const override;
  bool operator>(const GA_Individual& o) const override;

  World* w;
  int id, key;
  bool barren;
};

class Population : public GA_Population {
 public:
  explicit Population(World* w) : w(w) {}
  bool IsContinue() override;
  void Step() override;
  ZtLong Generation() const { return m_generation; }
  World* w;
};

struct World {
  explicit World(Input& in) : ties(in.Bool()), pop(std::make_unique<Population>(this)) {}
  ~World() { closing = true; }

  void Draw(Input& in) {
    i = in.In(0, 99), j = in.In(0, 99), seed = in.Byte();
    maxNum = in.In(-1, 14), ratio = in.In(0, 60), answers = in.Byte();
    answers |= in.Byte() << 8u;
    key = static_cast<int>(in.In(0, 6)), barren = in.In(0, 7) == 0;
    genes.clear();
    for (ZtLong n = in.In(0, 5); n > 0; --n) genes.push_back(static_cast<int>(in.Byte()));
    lib.asked = model.asked = 0;
  }
  void Check() {
    ZT_FUZZ_CHECK(lib.log == model.log);
    Same(pop->GetLength(), static_cast<ZtLong>(ms.size())), Same(pop->GetCur(), cur);
    Same(pop->Generation(), generation), Same(pop->GetMaxNum(), limit);
    for (size_t k = 0; k < ms.size(); ++k) {
      const auto& x = static_cast<const Ind&>(pop->GetPData(static_cast<ZtLong>(k)));
      Same(x.id, ms[k].id), Same(x.key, ms[k].key),
          Same(x.GetLength(), static_cast<ZtLong>(ms[k].genes.size()));
      for (size_t g = 0; g < ms[k].genes.size(); ++g) {
        const auto* gene = static_cast<const Gene*>(x.GetAt(static_cast<ZtLong>(g)));
        Same(gene != nullptr ? gene->v : -1, ms[k].genes[g]);
      }
    }
  }
  bool Less(const Model& a, const Model& b) const { return !ties && a.key < b.key; }
  bool Answer(Side& side) { return (answers >> (side.asked++ % 16) & 1) == 0; }

  // The model of the population's calls.
  void Append(const Model& x) {
    const auto [found, at] = zt::fuzz::SortedPlace(
        static_cast<ZtLong>(ms.size()),
        [&](ZtLong k) { return Less(x, ms[static_cast<size_t>(k)]); },
        [&](ZtLong k) { return Less(ms[static_cast<size_t>(k)], x); });
    static_cast<void>(found);
    ms.insert(ms.begin() + at, x), cur = at;
  }
  ZtLong Multiply(Model a, Model b) {  // a's Multiply with b (copies: Append moves the list)
    model.Line('X', a.id, b.id);
    if (b.genes.size() > a.genes.size()) return Multiply(b, a);
    const auto m = static_cast<ZtLong>(a.genes.size()), l = static_cast<ZtLong>(b.genes.size());
    if (l == 0) return 0;
    Model c[2];
    for (Model& child : c) model.Line('N', a.id), child = Model{model.nextId++, 0, false, {}};
    if (a.barren) return 0;
    const ZtLong p1 = zt::platform::Rand15() % l, p2 = l == 1 ? 0 : (p1 + l / 2 - 1) % l;
    const auto clone = [this](int v) {
      return v < 0 ? -1 : (model.Line('C', v), ClonesToNull(v) ? -1 : v);
    };
    for (ZtLong k = 0; k < m; ++k) {
      const bool in = k < l && (p1 <= p2 ? p1 <= k && k <= p2 : k >= p1 || k <= p2);
      const int from[2] = {
          (in ? b : a).genes[static_cast<size_t>(k)],
          k < l ? (in ? a : b).genes[static_cast<size_t>(k)] : a.genes[static_cast<size_t>(k)]};
      for (int h = 0; h < 2; ++h) c[h].genes.push_back(clone(from[h]));
    }
    for (Model& child : c) model.Line('I', child.id), child.key = KeyOf(child.genes);
    for (Model& child : c) Append(child);
    return 2;
  }
  bool IsContinue() { return model.Line('?', 0), Answer(model); }
  void Evolve() {
    std::vector<Model> snapshot = ms;
    const auto n = static_cast<ZtLong>(snapshot.size());
    for (ZtLong k = 0; k < n && IsContinue(); ++k) {
      const int r = zt::platform::Rand15();
      const auto rank = static_cast<ZtLong>(std::sqrt(static_cast<double>(r % (n * n))));
      Multiply(snapshot[static_cast<size_t>(n - 1 - rank)], snapshot[static_cast<size_t>(k)]);
      Multiply(snapshot[static_cast<size_t>(r % n)], snapshot[static_cast<size_t>(k)]);
      model.Line('S', 0);
    }
    while (!ms.empty() && static_cast<ZtLong>(ms.size()) > maxNum) {  // stops when empty
      const int counted =
          static_cast<int>(ms.size()) - (kAwaitingFixTrimDeletesAfterUnlinking ? 1 : 0);
      model.Line('D', ms.back().id, counted), ms.pop_back();
      cur = static_cast<ZtLong>(ms.size()) - 1;
    }
    const ZtLong count = static_cast<ZtLong>(static_cast<std::int64_t>(maxNum) * ratio) / 100;
    for (ZtLong k = 0; k < count && !ms.empty() && IsContinue(); ++k) {
      cur = zt::platform::Rand15() % static_cast<ZtLong>(ms.size());
      const Model& picked = ms[static_cast<size_t>(cur)];
      model.Line('M', picked.id);
      if (picked.id % 3 != 0) {
        Append(Model{model.nextId++, picked.id % 7, false, {1000 + picked.id % 100}});
      }
      model.Line('S', 0);
    }
    ++generation;
  }

  bool ties, closing = false;
  std::unique_ptr<Population> pop;
  Side lib, model;
  std::vector<Model> ms;  // the population as the model has it
  ZtLong cur = -1, generation = 0, i = 0, j = 0, maxNum = 100, ratio = 10, limit = 100;
  unsigned seed = 0, answers = 0;
  int key = 0;
  bool barren = false;
  std::vector<int> genes;
};

Ind::~Ind() {
  if (!w->closing) w->lib.Line('D', id, static_cast<int>(w->pop->GetLength()));
}
GA_Individual* Ind::New() const {
  w->lib.Line('N', id);
  const int child = w->lib.nextId++;
  return barren ? nullptr : new Ind(w, child, 0, false);
}
void Ind::Initialize() {
  w->lib.Line('I', id);
  std::vector<int> genes;
  genes.reserve(static_cast<size_t>(GetLength()));
  for (ZtLong k = 0; k < GetLength(); ++k) {
    genes.push_back(GetAt(k) != nullptr ? static_cast<const Gene*>(GetAt(k))->v : -1);
  }
  key = KeyOf(genes);
}
GA_Individual* Ind::Mutation() const {
  w->lib.Line('M', id);
  if (id % 3 == 0) return nullptr;
  auto* mutant = new Ind(w, w->lib.nextId++, id % 7, false);
  mutant->ZtDynPArray::Append(new Gene(&w->lib, 1000 + id % 100));
  return mutant;
}
ZtLong Ind::Multiply(const GA_Individual& other, GA_Population& population) const {
  w->lib.Line('X', id, static_cast<const Ind&>(other).id);
  return GA_Individual::Multiply(other, population);
}
bool Ind::operator<(const GA_Individual& o) const {
  return !w->ties && key < static_cast<const Ind&>(o).key;
}
bool Ind::operator>(const GA_Individual& o) const {
  return !w->ties && key > static_cast<const Ind&>(o).key;
}
bool Population::IsContinue() { return w->lib.Line('?', 0), w->Answer(w->lib); }
void Population::Step() { w->lib.Line('S', 0); }

using W = World;
const std::vector<zt::fuzz::Op<W>> kOps = {
    {"Append",  // a new individual with the drawn genes (null is ignored)
     [](W& w) {
       if (w.ms.size() > 60) return;
       if (w.genes.empty() && w.barren) return w.pop->Append(nullptr);
       const int id = w.lib.nextId++;
       auto* x = new Ind(&w, id, w.key, w.barren);
       for (int v : w.genes) x->ZtDynPArray::Append(v % 11 == 10 ? nullptr : new Gene(&w.lib, v));
       w.pop->Append(x);
       Model m{w.model.nextId++, w.key, w.barren, {}};
       for (int v : w.genes) m.genes.push_back(v % 11 == 10 ? -1 : v);
       w.Append(m);
     }},
    {"Multiply",
     [](W& w) {
       if (w.ms.empty()) return;
       const auto n = static_cast<ZtLong>(w.ms.size());
       const ZtLong a = w.i % n, b = w.j % n;
       std::srand(w.seed);
       const ZtLong got = w.pop->GetPData(a).Multiply(w.pop->GetPData(b), *w.pop);
       std::srand(w.seed);
       Same(got, w.Multiply(w.ms[static_cast<size_t>(a)], w.ms[static_cast<size_t>(b)]));
     }},
    {"Evolve",
     [](W& w) {
       if (w.ms.size() > 40) w.maxNum = w.maxNum % 8;
       w.pop->SetMaxNum(w.limit = w.maxNum), w.pop->SetMutationRatio(w.ratio);
       Same(w.pop->GetMutationRatio(), w.ratio);
       std::srand(w.seed);
       w.pop->Evolve();
       std::srand(w.seed);
       w.Evolve();
     }},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  return zt::fuzz::PlayAny(data, size, kOps);
}
