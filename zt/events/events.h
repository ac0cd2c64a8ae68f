// zt/events/events.h
//
// The in-process event bus. A client derives reactors from ZtEventReactor, gives each a mask of
// the event types it wants and registers them; events carry a name, an untyped data pointer and
// a type mask, and are either delivered at once (ZtSendEvent) or queued (ZtPostEvent) until the
// client drains the queue (ZtProcessPostEvents).
//
//   Logger log(0);  ZtRegisterReactor(&log);      // mask 0: every event
//   ZtPostEvent(L"saved", &doc, 0x4);  ZtProcessPostEvents();   // log.React(L"saved", &doc)
//
// Delivery offers the event to the registered reactors in registration order (a reactor
// registered twice receives it twice). A reactor receives it when its mask is 0, the event's type
// is 0, or the two share a bit. React gets the event's own name, valid during the call only, and
// the data pointer; the bus never reads, copies or frees the data.
//
// ZtPostEvent copies the name now and appends the event to an unbounded queue that owns it.
// ZtProcessPostEvents pops events from the head, delivers and destroys each, until the queue is
// empty: events posted meanwhile are delivered by the same call, after those queued before them.
//
// React may use the bus. A nested send or processing runs to its end first; the outer delivery
// then goes on with the reactor after the one it was calling. A reactor unregistered during a
// delivery receives nothing more from it (itself included); one registered during a delivery
// receives the later events, not the ones being delivered. An exception from React passes to the
// caller: ZtSendEvent's event is destroyed, and for ZtProcessPostEvents the event being delivered
// is destroyed while the later ones stay queued.
//
// Null names count as L"". Registering or unregistering a null reactor does nothing. The checked
// build reports both (zt/checked.h). The bus's
// registry and queue are built when the library is loaded (or at first use, if a client's static
// object comes first) and destroyed when it is unloaded; the queue then destroys the events still
// in it, undelivered, and the registry forgets its reactors without touching them. After that the
// bus has no reactors: registering and sending do nothing, posted events are dropped. A client
// unregisters a reactor before destroying it.
//
// The bus takes no lock: a client calls it from one thread at a time.
#ifndef ZT_EVENTS_EVENTS_H_
#define ZT_EVENTS_EVENTS_H_

#include "zt/config.h"
#include "zt/text/string.h"

namespace zt::detail {
class EventBus;
}  // namespace zt::detail

/// A named event with a data pointer and a type mask (0 stands for every type). Events compare
/// by name only, code units as unsigned values; data and type take no part.
class ZT_API ZtEvent {
 public:
  /// Copies the name (null counts as L""); stores data and type.
  ZtEvent(const wchar_t* name, void* data, unsigned int type);
  /// Copies the name, the data pointer and the type.
  ZtEvent(const ZtEvent& src);
  ZtEvent& operator=(const ZtEvent& src);
  ~ZtEvent();

  bool operator==(const ZtEvent& e) const;
  bool operator!=(const ZtEvent& e) const;
  bool operator<(const ZtEvent& e) const;
  bool operator>(const ZtEvent& e) const;

 protected:
  ZtStringW name;
  void* data;
  unsigned int type;

 private:
  friend class zt::detail::EventBus;
};

/// A receiver of events (override React). The mask selects the event types it receives; 0 means
/// every type. Copies copy the mask, never the registration; destroying a reactor does not
/// unregister it. React is the only virtual member: the class has no virtual destructor, so a
/// client never deletes a reactor through a ZtEventReactor pointer.
class ZT_API ZtEventReactor {
 public:
  ZtEventReactor(unsigned int mask = 0);  // NOLINT(google-explicit-constructor): interface
  ZtEventReactor(const ZtEventReactor& src);
  ZtEventReactor& operator=(const ZtEventReactor& src);

  /// Receives an event: `name` points at the event's own name, valid during the call only.
  virtual void React(const wchar_t* name, void* data) = 0;

 protected:
  unsigned int mask;

 private:
  friend class zt::detail::EventBus;
};

/// Appends `reactor` to the end of the registry, also when it is already there.
ZT_API void ZtRegisterReactor(ZtEventReactor* reactor);
/// Removes every registry entry equal to `reactor`; an unknown pointer changes nothing.
ZT_API void ZtUnRegisterReactor(ZtEventReactor* reactor);
/// Delivers the event at once; an exception from React passes through.
ZT_API void ZtSendEvent(const wchar_t* name, void* data, unsigned int type);
/// Queues a copy of the event (the name is copied, the data pointer kept). Throws
/// std::bad_alloc when memory runs out, and then nothing is queued.
ZT_API void ZtPostEvent(const wchar_t* name, void* data, unsigned int type);
/// Delivers and destroys the queued events, oldest first, until the queue is empty.
ZT_API void ZtProcessPostEvents();

#endif  // ZT_EVENTS_EVENTS_H_
