// fuzz/events_fuzz.cpp
//
// The event bus with four scripted reactors against a model bus. On every call a reactor logs
// what it received and then takes the next step of its script: send, post, register or
// unregister a reactor, process the queue, throw, or nothing. The model delivers as the bus
// does: to the registered reactors in registration order whose mask is 0, or shares a bit with
// the event's type, or meets a type of 0; a delivery offers the event to the entries that were
// registered when it began, skipping those unregistered meanwhile; nested deliveries run to their
// end first; posted events are delivered oldest first by the processing call that is running,
// and an exception leaves the delivery with the event already out of the queue. The logs of
// received events must match after every call. A budget of script steps per call keeps scripts
// that post on every delivery finite.
#include <cstdint>
#include <deque>
#include <string>

#include "fuzz/driver.h"
#include "zt/events/events.h"

namespace {

using zt::fuzz::Input;

constexpr int kReactors = 4;
const wchar_t* const kNames[] = {L"", L"a", L"b", L"ab", nullptr};  // null counts as L""

struct Step {
  enum Kind { kNothing, kSend, kPost, kRegister, kUnRegister, kProcess, kThrow } kind;
  int who, name;  // a reactor; a name index
  unsigned type;
};
struct Thrown {};

struct Event {
  int name;
  std::uintptr_t data;
  unsigned type;
};
using Log = std::vector<std::pair<int, std::wstring>>;  // reactor, name and data received

// What both sides share: the scripts, the masks and the budget rule.
struct Scripts {
  std::vector<Step> steps[kReactors];
  unsigned masks[kReactors] = {};
  // The step for reactor r's call number `calls`, or nothing once the budget is spent.
  Step Next(int r, int& calls, int& budget) const {
    const auto& s = steps[r];
    if (s.empty() || budget <= 0) return Step{Step::kNothing, 0, 0, 0};
    return --budget, s[static_cast<size_t>(calls++) % s.size()];
  }
};

// Data pointers are addresses in this table; an event's data is the index.
char g_data[256];
void* Data(std::uintptr_t i) { return &g_data[i]; }

std::wstring Entry(const wchar_t* name, std::uintptr_t data) {
  return std::wstring(name != nullptr ? name : L"") + L'#' + std::to_wstring(data);
}

// Reactor r takes step s on a bus: the library's or the model's.
template <class Bus>
void Take(Bus& bus, int r, const Step& s) {
  const auto data = static_cast<std::uintptr_t>(r);
  switch (s.kind) {
    case Step::kSend:
      return bus.Send(s.name, data, s.type);
    case Step::kPost:
      return bus.Post(s.name, data, s.type);
    case Step::kRegister:
      return bus.Register(s.who);
    case Step::kUnRegister:
      return bus.UnRegister(s.who);
    case Step::kProcess:
      return bus.Process();
    case Step::kThrow:
      throw Thrown{};
    case Step::kNothing:
      return;
  }
}

// The bus as the model sees it.
struct ModelBus {
  const Scripts* scripts;
  Log log;
  std::vector<int> registry;  // reactor, or -1 for an entry emptied during a delivery
  std::deque<Event> queue;
  int depth = 0, budget = 0, calls[kReactors] = {};

  void Register(int r) { registry.push_back(r); }
  void UnRegister(int r) {
    for (int& e : registry) e = e == r ? -1 : e;
    Compact();
  }
  void Compact() {
    if (depth == 0)
      registry.erase(std::remove(registry.begin(), registry.end(), -1), registry.end());
  }
  void Deliver(const Event& e) {
    ++depth;
    struct Walk {
      ModelBus& bus;
      ~Walk() { --bus.depth, bus.Compact(); }
    } walk{*this};
    const size_t last = registry.size();
    for (size_t i = 0; i < last; ++i) {
      const int r = registry[i];
      const unsigned mask = r < 0 ? 0 : scripts->masks[r];
      if (r >= 0 && (mask == 0 || e.type == 0 || (mask & e.type) != 0)) React(r, e);
    }
  }
  void Process() {
    while (!queue.empty()) {
      const Event e = queue.front();
      queue.pop_front();
      Deliver(e);
    }
  }
  void React(int r, const Event& e) {
    log.emplace_back(r, Entry(kNames[e.name], e.data));
    Take(*this, r, scripts->Next(r, calls[r], budget));
  }
  void Send(int name, std::uintptr_t data, unsigned type) { Deliver(Event{name, data, type}); }
  void Post(int name, std::uintptr_t data, unsigned type) {
    queue.push_back(Event{name, data, type});
  }
};

struct World;

class Reactor : public ZtEventReactor {
 public:
  Reactor() = default;
  Reactor(World* w, int id, unsigned mask) : ZtEventReactor(mask), m_world(w), m_id(id) {}
  void React(const wchar_t* name, void* data) override;

 private:
  World* m_world = nullptr;
  int m_id = 0;
};

struct World {
  explicit World(Input& in) {
    for (int r = 0; r < kReactors; ++r) {
      scripts.masks[r] = in.Byte() % 16;
      for (int n = in.In(0, 3); n > 0; --n) {
        const auto kind = static_cast<Step::Kind>(in.Byte() % 7);
        const int who = static_cast<int>(in.In(0, kReactors - 1));
        const int name = static_cast<int>(in.In(0, 4));
        scripts.steps[r].push_back(Step{kind, who, name, in.Byte() % 16u});
      }
      reactors[r] = Reactor(this, r, scripts.masks[r]);
    }
    model.scripts = &scripts;
  }
  ~World() {
    for (Reactor& r : reactors) ZtUnRegisterReactor(&r);
    ZtProcessPostEvents();  // no reactor left: the queue just empties
  }
  void Draw(Input& in) {
    who = static_cast<int>(in.In(0, kReactors - 1)), name = static_cast<int>(in.In(0, 4));
    type = in.Byte() % 16u, data = in.Byte();
    lib.budget = model.budget = 24;
  }
  void Check() { ZT_FUZZ_CHECK(lib.log == model.log); }
  // Runs the same call on the bus and on the model; an exception must leave both.
  template <class L, class M>
  void Both(L onBus, M onModel) {
    bool thrown = false;
    try {
      onBus();
    } catch (const Thrown&) {
      thrown = true;
    }
    try {
      onModel();
      ZT_FUZZ_CHECK(!thrown);
    } catch (const Thrown&) {
      ZT_FUZZ_CHECK(thrown);
    }
  }
  // The library's bus, as Take sees it.
  void Send(int name, std::uintptr_t data, unsigned type) {
    ZtSendEvent(kNames[name], Data(data), type);
  }
  void Post(int name, std::uintptr_t data, unsigned type) {
    ZtPostEvent(kNames[name], Data(data), type);
  }
  void Register(int r) { ZtRegisterReactor(&reactors[r]); }
  void UnRegister(int r) { ZtUnRegisterReactor(&reactors[r]); }
  static void Process() { ZtProcessPostEvents(); }

  Scripts scripts;
  Reactor reactors[kReactors];
  struct {
    Log log;
    int budget = 0, calls[kReactors] = {};
  } lib;
  ModelBus model{};
  int who = 0, name = 0;
  unsigned type = 0;
  std::uintptr_t data = 0;
};

void Reactor::React(const wchar_t* name, void* data) {
  World& w = *m_world;
  const auto index = static_cast<std::uintptr_t>(static_cast<char*>(data) - g_data);
  w.lib.log.emplace_back(m_id, Entry(name, index));
  Take(w, m_id, w.scripts.Next(m_id, w.lib.calls[m_id], w.lib.budget));
}

using W = World;
const std::vector<zt::fuzz::Op<W>> kOps = {
    {"ZtRegisterReactor",
     [](W& w) { ZtRegisterReactor(&w.reactors[w.who]), w.model.Register(w.who); }},
    {"ZtUnRegisterReactor",
     [](W& w) { ZtUnRegisterReactor(&w.reactors[w.who]), w.model.UnRegister(w.who); }},
    {"null reactors", [](W& /*w*/) { ZtRegisterReactor(nullptr), ZtUnRegisterReactor(nullptr); }},
    {"ZtSendEvent",
     [](W& w) {
       w.Both([&] { w.Send(w.name, w.data, w.type); },
              [&] { w.model.Send(w.name, w.data, w.type); });
     }},
    {"ZtPostEvent",
     [](W& w) { w.Post(w.name, w.data, w.type), w.model.Post(w.name, w.data, w.type); }},
    {"ZtProcessPostEvents",
     [](W& w) { w.Both([] { ZtProcessPostEvents(); }, [&] { w.model.Process(); }); }},
    {"copy a reactor's mask",  // the registration is not copied
     [](W& w) {
       const int from = (w.who + 1) % kReactors;
       static_cast<ZtEventReactor&>(w.reactors[w.who]) = w.reactors[from];
       w.scripts.masks[w.who] = w.scripts.masks[from];
     }},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  return zt::fuzz::PlayAny(data, size, kOps);
}
