// examples/events: reactors with type masks, events sent at once and posted to the queue, and a
// reactor that posts a follow-up event while the queue is being processed.
#include <cstdio>
#include <string>

#include "zt/events/events.h"
#include "zt/text/string.h"

namespace {

// Event types, one bit each.
constexpr unsigned kFile = 0x1;
constexpr unsigned kNetwork = 0x2;
constexpr unsigned kAudit = 0x4;

std::string Narrow(const wchar_t* text) { return std::string(ZtStringA(text)); }

/// Prints every event it receives, with the reactor's name and the event's data (a text).
class Printer : public ZtEventReactor {
 public:
  Printer(const char* who, unsigned mask) : ZtEventReactor(mask), who_(who) {}
  void React(const wchar_t* name, void* data) override {
    std::printf("  %-8s got %-9s %s\n", who_, Narrow(name).c_str(), static_cast<const char*>(data));
  }

 private:
  const char* who_;
};

/// On every "saved" event, posts an "audited" event: it is delivered by the same processing
/// call, after the events that were queued before it.
class Auditor : public ZtEventReactor {
 public:
  Auditor() : ZtEventReactor(kFile) {}
  void React(const wchar_t* name, void* data) override {
    if (std::wstring(name) != L"saved") return;
    std::printf("  auditor  posts audited for %s\n", static_cast<const char*>(data));
    ZtPostEvent(L"audited", data, kAudit);
  }
};

}  // namespace

int main() {
  Printer files("files", kFile);
  Printer network("network", kNetwork);
  Printer everything("all", 0);  // mask 0: every event
  Auditor auditor;
  for (ZtEventReactor* r :
       {static_cast<ZtEventReactor*>(&files), static_cast<ZtEventReactor*>(&network),
        static_cast<ZtEventReactor*>(&everything), static_cast<ZtEventReactor*>(&auditor)}) {
    ZtRegisterReactor(r);
  }

  char report[] = "report.txt";
  char peer[] = "10.0.0.7";
  std::printf("send opened (file): delivered at once, in registration order\n");
  ZtSendEvent(L"opened", report, kFile);
  std::printf("send closed (type 0): every reactor receives it\n");
  ZtSendEvent(L"closed", peer, 0);

  std::printf("post saved (file), connected (network); nothing is delivered yet\n");
  ZtPostEvent(L"saved", report, kFile);
  ZtPostEvent(L"connected", peer, kNetwork);
  std::printf("process the queue:\n");
  ZtProcessPostEvents();

  std::printf("unregister all; send opened again: nobody listens\n");
  ZtUnRegisterReactor(&everything);
  ZtUnRegisterReactor(&files);
  ZtUnRegisterReactor(&network);
  ZtUnRegisterReactor(&auditor);
  ZtSendEvent(L"opened", report, kFile);
  return 0;
}
