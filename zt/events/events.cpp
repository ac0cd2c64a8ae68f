#include "zt/events/events.h"

#include <cstddef>
#include <deque>

#include "zt/checked.h"
#include "zt/containers/dlist.h"

ZtEvent::ZtEvent(const wchar_t* name, void* data, unsigned int type)
    : name(name), data(data), type(type) {}

ZtEvent::ZtEvent(const ZtEvent& src) = default;

ZtEvent& ZtEvent::operator=(const ZtEvent& src) = default;

ZtEvent::~ZtEvent() = default;

bool ZtEvent::operator==(const ZtEvent& e) const { return name == e.name; }

bool ZtEvent::operator!=(const ZtEvent& e) const { return name != e.name; }

bool ZtEvent::operator<(const ZtEvent& e) const { return name < e.name; }

bool ZtEvent::operator>(const ZtEvent& e) const { return name > e.name; }

ZtEventReactor::ZtEventReactor(unsigned int mask) : mask(mask) {}

ZtEventReactor::ZtEventReactor(const ZtEventReactor& src) = default;

ZtEventReactor& ZtEventReactor::operator=(const ZtEventReactor& src) = default;

namespace zt::detail {

/// The bus's process-wide state: the registry of reactors and the queue of posted events.
///
/// A delivery walks the registry by its own element pointer, never by the list's cursor, and
/// stops after the entry that was last when it began, so nested deliveries do not disturb it and
/// reactors registered meanwhile cannot keep it going. While any delivery runs, no node leaves
/// the registry: unregistering empties the entries (null) and the outermost delivery removes the
/// emptied ones when it ends, normally or by an exception. Null is never registered, so a null
/// entry is always such an emptied one.
///
/// Events are recycled: a delivered event goes to a list of spares, linked through their data
/// pointers, and the next send or post reassigns one (its name keeps its buffer when the new
/// name fits), so a steady flow of events allocates nothing. The queue holds event pointers in
/// blocks of many. When processing ends outside any delivery, the spares are cut to the number
/// of events it delivered (at least kKeptSpares), so a burst does not hold its memory.
class EventBus {
 public:
  /// The bus, built at the first call; null once it has been destroyed.
  static EventBus* Get();

  EventBus() = default;
  EventBus(const EventBus&) = delete;
  EventBus& operator=(const EventBus&) = delete;
  ~EventBus();

  void Register(ZtEventReactor* reactor) {
    if (reactor != nullptr) m_registry.Append(reactor);
  }
  void UnRegister(ZtEventReactor* reactor);
  void Send(const wchar_t* name, void* data, unsigned int type);
  void Post(const wchar_t* name, void* data, unsigned int type);
  void ProcessPosted();

 private:
  static constexpr std::size_t kKeptSpares = 64;

  /// Holds an event taken out for delivery and gives it back to the spares when it goes.
  class Lease {
   public:
    Lease(EventBus& bus, ZtEvent* event) : m_bus(bus), m_event(event) {}
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;
    ~Lease() { m_bus.Give(m_event); }
    const ZtEvent& operator*() const { return *m_event; }

   private:
    EventBus& m_bus;
    ZtEvent* m_event;
  };

  /// Counts a delivery under way; the outermost one compacts the registry as it leaves.
  class Walk {
   public:
    explicit Walk(EventBus& bus) : m_bus(bus) { ++m_bus.m_depth; }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;
    ~Walk() {
      if (--m_bus.m_depth == 0 && m_bus.m_emptied) {
        m_bus.m_emptied = false;
        m_bus.m_registry.FindDel(nullptr);
      }
    }

   private:
    EventBus& m_bus;
  };

  static bool Accepts(const ZtEventReactor& reactor, const ZtEvent& event) {
    return reactor.mask == 0 || event.type == 0 || (reactor.mask & event.type) != 0;
  }

  void Deliver(const ZtEvent& event);
  /// An event holding the three values, a spare one when there is one; `fresh` tells whether
  /// it was made now. Throws std::bad_alloc before anything changes.
  ZtEvent* Take(const wchar_t* name, void* data, unsigned int type, bool& fresh);
  void Give(ZtEvent* event) noexcept {
    event->data = m_spares;
    m_spares = event;
    ++m_spareCount;
  }
  /// Deletes spares until at most `keep` are left.
  void TrimSpares(std::size_t keep) noexcept;

  ZtDList<ZtEventReactor*> m_registry{0};
  std::deque<ZtEvent*> m_queue;  // owned, oldest first
  ZtEvent* m_spares = nullptr;   // owned, each linking the next through its data pointer
  std::size_t m_spareCount = 0;
  int m_depth = 0;         // deliveries under way, nested ones included
  bool m_emptied = false;  // some registry entries were emptied during a delivery
};

namespace {

// Set when the bus is destroyed. A plain bool is constant-initialised, so it reads right before
// any static object is built and after every one is destroyed.
bool g_busGone = false;

struct BusHolder {
  BusHolder() = default;
  BusHolder(const BusHolder&) = delete;
  BusHolder& operator=(const BusHolder&) = delete;
  ~BusHolder() { g_busGone = true; }
  EventBus bus;
};

}  // namespace

EventBus* EventBus::Get() {
  if (g_busGone) return nullptr;
  // Built on first use, so that a client's static object constructed before the library's own
  // can use the bus; the static below builds it when the library is loaded otherwise.
  static BusHolder holder;
  return &holder.bus;
}

namespace {
[[maybe_unused]] const EventBus* const g_busAtLoad = EventBus::Get();
}  // namespace

void EventBus::UnRegister(ZtEventReactor* reactor) {
  if (reactor == nullptr) return;
  if (m_depth == 0) {
    m_registry.FindDel(reactor);
    return;
  }
  for (const auto* p = m_registry.GetFirst(); p != nullptr; p = m_registry.GetNext(p)) {
    if (*p == reactor) {
      *const_cast<ZtEventReactor**>(p) = nullptr;  // an entry of our own, non-const list
      m_emptied = true;
    }
  }
}

void EventBus::Deliver(const ZtEvent& event) {
  const auto* const last = m_registry.GetLast();
  if (last == nullptr) return;
  const Walk walk(*this);
  for (const auto* p = m_registry.GetFirst(); p != nullptr; p = m_registry.GetNext(p)) {
    ZtEventReactor* reactor = *p;
    if (reactor != nullptr && Accepts(*reactor, event)) reactor->React(event.name, event.data);
    if (p == last) break;
  }
}

EventBus::~EventBus() {
  for (ZtEvent* event : m_queue) delete event;
  TrimSpares(0);
}

ZtEvent* EventBus::Take(const wchar_t* name, void* data, unsigned int type, bool& fresh) {
  fresh = m_spares == nullptr;
  if (fresh) return new ZtEvent(name, data, type);
  ZtEvent* event = m_spares;
  event->name = name;  // keeps the spare unchanged when it throws
  m_spares = static_cast<ZtEvent*>(event->data);
  --m_spareCount;
  event->data = data;
  event->type = type;
  return event;
}

void EventBus::TrimSpares(std::size_t keep) noexcept {
  for (; m_spareCount > keep; --m_spareCount) {
    ZtEvent* event = m_spares;
    m_spares = static_cast<ZtEvent*>(event->data);
    delete event;
  }
}

void EventBus::Send(const wchar_t* name, void* data, unsigned int type) {
  bool fresh = false;
  const Lease event(*this, Take(name, data, type, fresh));
  Deliver(*event);
}

void EventBus::Post(const wchar_t* name, void* data, unsigned int type) {
  bool fresh = false;
  ZtEvent* event = Take(name, data, type, fresh);
  try {
    m_queue.push_back(event);
  } catch (...) {
    // Nothing is queued, and nothing is kept that the call allocated.
    if (fresh) {
      delete event;
    } else {
      Give(event);
    }
    throw;
  }
}

void EventBus::ProcessPosted() {
  std::size_t delivered = 0;
  while (!m_queue.empty()) {
    // Out of the queue before the delivery, and back among the spares also when React throws.
    const Lease event(*this, m_queue.front());
    m_queue.pop_front();
    ++delivered;
    Deliver(*event);
  }
  if (m_depth == 0) TrimSpares(delivered > kKeptSpares ? delivered : kKeptSpares);
}

}  // namespace zt::detail

using zt::detail::EventBus;

// The checked build reports a null reactor or name given to the bus; it is then ignored (or
// taken as L"") as in the ordinary build.
void ZtRegisterReactor(ZtEventReactor* reactor) {
  ZT_REPORT_UNLESS(reactor != nullptr, "ZtRegisterReactor", "", "reactor pointer", 0);
  if (EventBus* bus = EventBus::Get()) bus->Register(reactor);
}

void ZtUnRegisterReactor(ZtEventReactor* reactor) {
  ZT_REPORT_UNLESS(reactor != nullptr, "ZtUnRegisterReactor", "", "reactor pointer", 0);
  if (EventBus* bus = EventBus::Get()) bus->UnRegister(reactor);
}

void ZtSendEvent(const wchar_t* name, void* data, unsigned int type) {
  ZT_REPORT_UNLESS(name != nullptr, "ZtSendEvent", "", "name pointer", 0);
  if (EventBus* bus = EventBus::Get()) bus->Send(name, data, type);
}

void ZtPostEvent(const wchar_t* name, void* data, unsigned int type) {
  ZT_REPORT_UNLESS(name != nullptr, "ZtPostEvent", "", "name pointer", 0);
  if (EventBus* bus = EventBus::Get()) bus->Post(name, data, type);
}

void ZtProcessPostEvents() {
  if (EventBus* bus = EventBus::Get()) bus->ProcessPosted();
}
