// tests/events/events_test.cpp
#include "zt/events/events.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/fault_injection.h"

namespace {

std::wstring g_log;  // "<reactor><event name>;" per delivery

/// Logs each delivery, then runs its action (which may use the bus) for the named event.
class Probe : public ZtEventReactor {
 public:
  explicit Probe(wchar_t id, unsigned int mask = 0) : ZtEventReactor(mask), m_id(id) {}
  void React(const wchar_t* name, void* data) override {
    g_log += m_id;
    g_log += name;
    g_log += data != nullptr ? L"*;" : L";";
    if (m_action && name == m_trigger) m_action();
  }
  void On(const wchar_t* trigger, std::function<void()> action) {
    m_trigger = trigger;
    m_action = std::move(action);
  }
  unsigned int Mask() const { return mask; }

 private:
  wchar_t m_id;
  std::wstring m_trigger;
  std::function<void()> m_action;
};

/// Exposes an event's fields.
struct EventView : ZtEvent {
  using ZtEvent::ZtEvent;
  const wchar_t* Name() const { return name; }
  bool Same(void* d, unsigned int t) const { return data == d && type == t; }
};

class EventsTest : public ::testing::Test {
 protected:
  void SetUp() override { g_log.clear(); }
  void TearDown() override {
    for (auto& p : m_probes) ZtUnRegisterReactor(p.get());
    ZtProcessPostEvents();  // no reactor left: drops what a failed test left queued
  }
  Probe& Add(wchar_t id, unsigned int mask = 0) {
    m_probes.push_back(std::make_unique<Probe>(id, mask));
    ZtRegisterReactor(m_probes.back().get());
    return *m_probes.back();
  }
  std::vector<std::unique_ptr<Probe>> m_probes;
};

TEST_F(EventsTest, MasksSelectReactorsAndReactGetsNameAndData) {
  Add(L'a', 0);
  Add(L'b', 0x5);
  Add(L'c', 0x2);
  int payload = 0;
  const struct {
    unsigned int type;
    const wchar_t* log;
  } cases[] = {{0, L"ae*;be*;ce*;"}, {0x4, L"ae*;be*;"}, {0x14, L"ae*;be*;"}, {0x2, L"ae*;ce*;"}};
  for (const auto& c : cases) {
    g_log.clear();
    ZtSendEvent(L"e", &payload, c.type);
    EXPECT_EQ(g_log, c.log) << c.type;
  }
  g_log.clear();
  ZtSendEvent(nullptr, nullptr, 0x8);  // a null name arrives as L""
  EXPECT_EQ(g_log, L"a;");
}

TEST_F(EventsTest, RegistrationOrderDuplicatesAndUnregistering) {
  Probe& a = Add(L'a');
  Add(L'b');
  ZtRegisterReactor(&a);
  ZtRegisterReactor(nullptr);
  ZtSendEvent(L"1", nullptr, 0);
  ZtUnRegisterReactor(&a);  // both entries go
  ZtUnRegisterReactor(&a);
  ZtUnRegisterReactor(nullptr);
  ZtSendEvent(L"2", nullptr, 0);
  EXPECT_EQ(g_log, L"a1;b1;a1;b2;");
}

TEST_F(EventsTest, PostedEventsComeInOrderWithThosePostedMeanwhile) {
  Add(L'a').On(L"1", [] { ZtPostEvent(L"3", nullptr, 0); });
  std::wstring name = L"1";
  ZtPostEvent(name.c_str(), nullptr, 0);
  name = L"X";  // the queue holds its own copy
  ZtPostEvent(L"2", nullptr, 0);
  EXPECT_EQ(g_log, L"");
  ZtProcessPostEvents();
  EXPECT_EQ(g_log, L"a1;a2;a3;");
  ZtProcessPostEvents();
  EXPECT_EQ(g_log, L"a1;a2;a3;");
}

TEST_F(EventsTest, NestedUseOfTheBusLeavesTheOuterDeliveryOnCourse) {
  Probe& a = Add(L'a');
  Probe& b = Add(L'b');
  Probe& c = Add(L'c');
  Probe& d = Add(L'd');
  const struct {
    std::function<void()> action;
    const wchar_t* log;
  } cases[] = {
      {[] { ZtSendEvent(L"i", nullptr, 0); }, L"ao;bo;ai;bi;ci;di;co;do;"},
      {[&b] { ZtUnRegisterReactor(&b); }, L"ao;bo;co;do;"},
      {[&c] { ZtUnRegisterReactor(&c); }, L"ao;bo;do;"},
      {[&a] { ZtUnRegisterReactor(&a); }, L"ao;bo;co;do;"},
      {[&b] {
         ZtUnRegisterReactor(&b);
         ZtSendEvent(L"i", nullptr, 0);
       },
       L"ao;bo;ai;ci;di;co;do;"},
      {[] {
         ZtPostEvent(L"p", nullptr, 0);
         ZtProcessPostEvents();
       },
       L"ao;bo;ap;bp;cp;dp;co;do;"},
      {[&b] { ZtRegisterReactor(&b); }, L"ao;bo;co;do;"},  // the new entry gets later events
  };
  for (const auto& k : cases) {
    for (Probe* p : {&a, &b, &c, &d}) {
      ZtUnRegisterReactor(p);
      ZtRegisterReactor(p);
    }
    b.On(L"o", k.action);
    g_log.clear();
    ZtSendEvent(L"o", nullptr, 0);
    EXPECT_EQ(g_log, k.log);
  }
  b.On(L"", nullptr);
  g_log.clear();
  ZtSendEvent(L"z", nullptr, 0);  // the last case registered b a second time
  EXPECT_EQ(g_log, L"az;bz;cz;dz;bz;");
}

TEST_F(EventsTest, ReactorsRegisteredDuringADeliveryDoNotKeepItGoing) {
  std::vector<std::unique_ptr<Probe>> spawned;
  std::function<void()> spawn = [&spawned, &spawn] {
    spawned.push_back(std::make_unique<Probe>(L'n'));
    spawned.back()->On(L"e", spawn);
    ZtRegisterReactor(spawned.back().get());
  };
  Add(L'a').On(L"e", spawn);
  ZtSendEvent(L"e", nullptr, 0);
  ZtSendEvent(L"e", nullptr, 0);
  EXPECT_EQ(g_log, L"ae;ae;ne;");
  for (auto& p : spawned) ZtUnRegisterReactor(p.get());
}

TEST_F(EventsTest, AnExceptionFromReactLeavesTheLaterEventsQueued) {
  Probe& a = Add(L'a');
  a.On(L"!", [&a] {
    ZtUnRegisterReactor(&a);
    throw std::runtime_error("react");
  });
  Add(L'b');
  EXPECT_THROW(ZtSendEvent(L"!", nullptr, 0), std::runtime_error);
  ZtRegisterReactor(&a);  // now after b
  ZtPostEvent(L"!", nullptr, 0);
  ZtPostEvent(L"2", nullptr, 0);
  EXPECT_THROW(ZtProcessPostEvents(), std::runtime_error);
  ZtProcessPostEvents();
  EXPECT_EQ(g_log, L"a!;b!;a!;b2;");
}

TEST_F(EventsTest, APostThatCannotAllocateQueuesNothing) {
  Add(L'a');
  int unused = 0;
  zt::test::ExpectStrongGuarantee(
      unused, [](int&) { ZtPostEvent(L"long event name", nullptr, 0); }, [](int) { return 0; });
  ZtProcessPostEvents();
  EXPECT_EQ(g_log, L"along event name;");
}

/// A client's static reactor: registered while static objects are built, and using the bus
/// again while they are destroyed, whichever of it and the library's objects goes first.
struct StaticReactor : ZtEventReactor {
  StaticReactor() : ZtEventReactor(0x100) { ZtRegisterReactor(this); }
  StaticReactor(const StaticReactor&) = delete;
  StaticReactor& operator=(const StaticReactor&) = delete;
  ~StaticReactor() override {
    ZtUnRegisterReactor(this);
    ZtSendEvent(L"bye", nullptr, 0);
    ZtPostEvent(L"bye", nullptr, 0);
  }
  void React(const wchar_t* /*name*/, void* /*data*/) override { ++count; }
  int count = 0;
} g_staticReactor;

TEST(StaticObjects, UseTheBusFromTheirConstructorsAndDestructors) {
  ZtSendEvent(L"s", nullptr, 0x100);
  EXPECT_EQ(g_staticReactor.count, 1);
}

TEST(Event, ComparesByNameAndCopiesEveryField) {
  int d = 0;
  const EventView e1(L"b", &d, 3);
  EXPECT_TRUE(e1 == EventView(L"b", nullptr, 0));
  EXPECT_TRUE(e1 < EventView(L"c", &d, 3) && e1 > EventView(L"a", &d, 3));
  EXPECT_TRUE(e1 != EventView(L"B", &d, 3) && EventView(L"bb", &d, 3) > e1);
  EventView e2(e1);
  EXPECT_TRUE(e2.Same(&d, 3) && e2 == e1);
  e2 = EventView(L"z", nullptr, 5);
  EXPECT_TRUE(e2.Same(nullptr, 5) && std::wstring(e2.Name()) == L"z");
  const Probe p(L'p', 7);
  Probe copy(L'q', 1);
  copy = p;
  EXPECT_EQ(copy.Mask(), 7u);
}

}  // namespace
