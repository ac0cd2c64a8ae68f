// tests/support/contract_reports.cpp
#include "tests/support/contract_reports.h"

#include <atomic>
#include <mutex>

#include "zt/checked.h"

namespace zt::test {
namespace {

std::atomic<long> g_reports{0};
std::mutex g_last_mutex;
std::string g_last;  // guarded by g_last_mutex

void Record(const ContractViolation& v) {
  ++g_reports;
  const std::lock_guard<std::mutex> lock(g_last_mutex);
  g_last = std::string(v.class_name) + "::" + v.operation + ": " + v.subject + " " +
           std::to_string(v.value);
}

const bool g_installed = (SetContractHandler(&Record), true);

}  // namespace

long ContractReports() { return g_reports.load(); }

std::string LastContractReport() {
  const std::lock_guard<std::mutex> lock(g_last_mutex);
  return g_last;
}

}  // namespace zt::test
