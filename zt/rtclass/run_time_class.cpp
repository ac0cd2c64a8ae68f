#include "zt/rtclass/run_time_class.h"

#include <cstring>

namespace {

// The kind-of walk: the bases depth-first in declared order up to the first null one, then the
// descriptor itself.
template <class Match>
bool IsKindOf(const ZtRxClassInfo& d, Match matches) {
  for (int i = 0; i < 5; ++i) {
    const ZtRxClassInfo* base = d.GetBaseClassInfo(i);
    if (base == nullptr) break;
    if (IsKindOf(*base, matches)) return true;
  }
  return matches(d);
}

}  // namespace

ZtRxClassInfo::~ZtRxClassInfo() = default;

// A null name is outside the caller's limits: the checked build reports it before strcmp reads it.
bool ZtRxClassInfo::IsTypeOf(const char* name) const {
  ZT_REPORT_UNLESS(name != nullptr, "IsTypeOf", "ZtRxClassInfo", "name pointer", 0);
  return std::strcmp(m_name, name) == 0;
}

bool ZtRxClassInfo::IsClassOf(const char* name) const {
  return IsKindOf(*this, [name](const ZtRxClassInfo& d) { return d.IsTypeOf(name); });
}

bool ZtRxClassInfo::IsClassOf(const ZtRxClassInfo* ci) const {
  return IsKindOf(*this, [ci](const ZtRxClassInfo& d) { return d.IsTypeOf(ci); });
}

ZtRxClassInfo ZtRxRunTimeClass::s_classInfo("ZtRxRunTimeClass", 0, nullptr, nullptr, nullptr,
                                            nullptr, nullptr, nullptr);

const ZtRxClassInfo* ZtRxRunTimeClass::GetCI() const { return &s_classInfo; }

ZtRxRunTimeClass::~ZtRxRunTimeClass() = default;

ZT_DEFINE_RX_DYNCREATE(ZtRxDynCreateClass, 1, ZtRxRunTimeClass);

ZtRxDynCreateClass::~ZtRxDynCreateClass() = default;
