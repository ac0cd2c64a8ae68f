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

std::wstring g_log;  // "<reactor id><event name>;" per delivery

/// Logs each delivery, then runs its action (which may use the bus) on the event `trigger`.
struct Probe : ZtEventReactor {
  explicit Probe(wchar_t id, unsigned int mask = 0) : ZtEventReactor(mask), id(id) {}
  void React(const wchar_t* name, void* data) override {
    g_log += id + std::wstring(name) + (data != nullptr ? L"*;" : L";");
    if (action && name == trigger) action();
  }
  unsigned int Mask() const { return mask; }
  wchar_t id;
  std::wstring trigger;
  std::function<void()> action;
};

class EventsTest : public ::testing::Test {
 protected:
  void SetUp() override { g_log.clear(); }
  void TearDown() override {
    for (auto& p : m_probes) ZtUnRegisterReactor(p.get());
    ZtProcessPostEvents();  // no reactor left: drops what a failed test left queued
  }
  Probe& Add(wchar_t id, unsigned int mask = 0, const wchar_t* trigger = L"",
             std::function<void()> action = {}) {
    Probe& p = *m_probes.emplace_back(std::make_unique<Probe>(id, mask));
    p.trigger = trigger, p.action = std::move(action);
    ZtRegisterReactor(&p);
    return p;
  }
  std::wstring Send(const wchar_t* name, unsigned int type = 0, void* data = nullptr) {
    g_log.clear();
    ZtSendEvent(name, data, type);
    return g_log;
  }
  std::vector<std::unique_ptr<Probe>> m_probes;
};

TEST_F(EventsTest, MasksOrderDuplicatesAndUnregistering) {
  Probe& a = Add(L'a', 0);
  Add(L'b', 0x5);
  Add(L'c', 0x2);
  int payload = 0;
  EXPECT_EQ(Send(L"e", 0, &payload), L"ae*;be*;ce*;");
  EXPECT_EQ(Send(L"e", 0x4), L"ae;be;");
  EXPECT_EQ(Send(L"e", 0x14), L"ae;be;");
  EXPECT_EQ(Send(nullptr, 0x2), L"a;c;");  // a null name arrives as L""
  ZtRegisterReactor(&a), ZtRegisterReactor(nullptr);
  EXPECT_EQ(Send(L"e", 0x8), L"ae;ae;");
  ZtUnRegisterReactor(&a), ZtUnRegisterReactor(nullptr);  // both entries of a go
  EXPECT_EQ(Send(L"e"), L"be;ce;");
}

TEST_F(EventsTest, PostedEventsComeInOrderWithThosePostedMeanwhile) {
  Add(L'a', 0, L"1", [] { ZtPostEvent(L"3", nullptr, 0); });
  std::wstring name = L"1";
  ZtPostEvent(name.c_str(), nullptr, 0);
  name = L"X";  // the queue holds its own copy
  ZtPostEvent(L"2", nullptr, 0);
  EXPECT_EQ(g_log, L"");
  ZtProcessPostEvents(), ZtProcessPostEvents();
  EXPECT_EQ(g_log, L"a1;a2;a3;");
}

TEST_F(EventsTest, NestedUseOfTheBusLeavesTheOuterDeliveryOnCourse) {
  Probe* p[] = {&Add(L'a'), &Add(L'b'), &Add(L'c'), &Add(L'd')};
  const struct {
    std::function<void()> action;
    const wchar_t* log;
  } cases[] = {
      {[] { ZtSendEvent(L"i", nullptr, 0); }, L"ao;bo;ai;bi;ci;di;co;do;"},
      {[&p] { ZtUnRegisterReactor(p[1]); }, L"ao;bo;co;do;"},  // itself
      {[&p] { ZtUnRegisterReactor(p[2]); }, L"ao;bo;do;"},     // the next one
      {[&p] { ZtUnRegisterReactor(p[0]); }, L"ao;bo;co;do;"},  // one already served
      {[&p] { ZtUnRegisterReactor(p[1]), ZtSendEvent(L"i", nullptr, 0); },
       L"ao;bo;ai;ci;di;co;do;"},
      {[] { ZtPostEvent(L"q", nullptr, 0), ZtProcessPostEvents(); }, L"ao;bo;aq;bq;cq;dq;co;do;"},
      {[&p] { ZtRegisterReactor(p[1]); }, L"ao;bo;co;do;"},  // the new entry gets later events
  };
  for (const auto& k : cases) {
    for (Probe* r : p) ZtUnRegisterReactor(r), ZtRegisterReactor(r);
    p[1]->trigger = L"o";
    p[1]->action = k.action;
    EXPECT_EQ(Send(L"o"), k.log);
  }
  EXPECT_EQ(Send(L"z"), L"az;bz;cz;dz;bz;");
}

TEST_F(EventsTest, ReactorsRegisteredDuringADeliveryDoNotKeepItGoing) {
  std::function<void()> spawn = [this, &spawn] { Add(L'n', 0, L"e", spawn); };
  Add(L'a', 0, L"e", spawn);
  EXPECT_EQ(Send(L"e"), L"ae;");
  EXPECT_EQ(Send(L"e"), L"ae;ne;");
}

TEST_F(EventsTest, AnExceptionFromReactLeavesTheLaterEventsQueued) {
  Probe& a = Add(L'a', 0, L"!", [this] {
    ZtUnRegisterReactor(m_probes[0].get());
    throw std::runtime_error("react");
  });
  Add(L'b');
  EXPECT_THROW(ZtSendEvent(L"!", nullptr, 0), std::runtime_error);
  ZtRegisterReactor(&a);  // now after b
  ZtPostEvent(L"!", nullptr, 0), ZtPostEvent(L"2", nullptr, 0);
  EXPECT_THROW(ZtProcessPostEvents(), std::runtime_error);
  ZtProcessPostEvents();
  EXPECT_EQ(g_log, L"a!;b!;a!;b2;");
}

TEST_F(EventsTest, APostThatCannotAllocateQueuesNothing) {
  Add(L'a');
  // Longer on every run than any name before, so that a recycled event has to grow its name.
  static std::wstring name = L"long event name";
  name += L'+';
  int unused = 0;
  zt::test::ExpectStrongGuarantee(
      unused, [](int&) { ZtPostEvent(name.c_str(), nullptr, 0); }, [](int) { return 0; });
  g_log.clear();
  ZtProcessPostEvents();
  EXPECT_EQ(g_log, L"a" + name + L";");
}

/// A client's static reactor, using the bus while static objects are built and destroyed.
struct StaticReactor : ZtEventReactor {
  StaticReactor() : ZtEventReactor(0x100) { ZtRegisterReactor(this); }
  StaticReactor(const StaticReactor&) = delete;
  StaticReactor& operator=(const StaticReactor&) = delete;
  ~StaticReactor() {
    ZtUnRegisterReactor(this);
    ZtPostEvent(L"bye", nullptr, 0);
  }
  void React(const wchar_t* /*name*/, void* /*data*/) override { ++count; }
  int count = 0;
} g_static;

TEST(Events, StaticReactorsAndComparisons) {
  const int before = g_static.count;
  ZtSendEvent(L"s", nullptr, 0x100);
  EXPECT_EQ(g_static.count, before + 1);
  const ZtEvent e(L"b", &g_static, 3);
  EXPECT_TRUE(e == ZtEvent(L"b", nullptr, 0) && e != ZtEvent(L"B", &g_static, 3));
  EXPECT_TRUE(e < ZtEvent(L"c", &g_static, 3) && e > ZtEvent(L"a", &g_static, 3));
  Probe copy(L'c', 1);
  static_cast<ZtEventReactor&>(copy) = g_static;  // the mask only: the copy stays unregistered
  EXPECT_EQ(copy.Mask(), 0x100u);
}

}  // namespace
