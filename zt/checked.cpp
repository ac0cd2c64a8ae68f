// zt/checked.cpp
//
// The report path of the checked build. It is compiled into every build, so that the export list
// is one and a checked client can be told it links an unchecked library (IsCheckedBuild).
#include "zt/checked.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace {

void PrintAndAbort(const zt::ContractViolation& v) {
  std::fprintf(stderr, "zt: %s::%s: %s %lld outside the contract\n", v.class_name, v.operation,
               v.subject, v.value);
  std::fflush(stderr);
  std::abort();
}

std::atomic<zt::ContractHandler> g_handler{&PrintAndAbort};

}  // namespace

namespace zt {

ContractHandler SetContractHandler(ContractHandler handler) {
  return g_handler.exchange(handler != nullptr ? handler : &PrintAndAbort);
}

void ReportContractViolation(const char* operation, const char* class_name, const char* subject,
                             long long value) {
  g_handler.load()(ContractViolation{operation, class_name, subject, value});
}

bool IsCheckedBuild() {
#if defined(ZT_CHECKED) && ZT_CHECKED
  return true;
#else
  return false;
#endif
}

}  // namespace zt
