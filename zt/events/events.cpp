#include "zt/events/events.h"

#include <memory>

#include "zt/containers/dlist.h"
#include "zt/containers/list_quene.h"

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
class EventBus {
 public:
  /// The bus, built at the first call; null once it has been destroyed.
  static EventBus* Get();

  void Register(ZtEventReactor* reactor) {
    if (reactor != nullptr) m_registry.Append(reactor);
  }
  void UnRegister(ZtEventReactor* reactor);
  void Deliver(const ZtEvent& event);
  ZtPDListQuene<ZtEvent>& Queue() { return m_queue; }

 private:
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

  ZtDList<ZtEventReactor*> m_registry{0};
  ZtPDListQuene<ZtEvent> m_queue{-1};
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

}  // namespace zt::detail

using zt::detail::EventBus;

void ZtRegisterReactor(ZtEventReactor* reactor) {
  if (EventBus* bus = EventBus::Get()) bus->Register(reactor);
}

void ZtUnRegisterReactor(ZtEventReactor* reactor) {
  if (EventBus* bus = EventBus::Get()) bus->UnRegister(reactor);
}

void ZtSendEvent(const wchar_t* name, void* data, unsigned int type) {
  EventBus* bus = EventBus::Get();
  if (bus == nullptr) return;
  const ZtEvent event(name, data, type);
  bus->Deliver(event);
}

void ZtPostEvent(const wchar_t* name, void* data, unsigned int type) {
  EventBus* bus = EventBus::Get();
  if (bus == nullptr) return;
  auto event = std::make_unique<ZtEvent>(name, data, type);
  if (bus->Queue().Push(event.get())) static_cast<void>(event.release());  // the queue owns it
}

void ZtProcessPostEvents() {
  EventBus* bus = EventBus::Get();
  if (bus == nullptr) return;
  ZtEvent* next = nullptr;
  while (bus->Queue().Pop(next)) {
    // Pop empties the head's place before its node goes: the list deletes nothing, `next` lives.
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDelete)
    const std::unique_ptr<ZtEvent> event(next);  // destroyed also when React throws
    bus->Deliver(*event);
  }
}
