#include "zt/streams/dyn_array_stream_ex.h"

#include <algorithm>
#include <cstdint>
#include <memory>

#include "zt/checked.h"
#include "zt/containers/array.h"  // the explicit instantiations need every member
#include "zt/containers/internal/element_ops.h"
#include "zt/streams/internal/copy_bytes.h"

template class ZT_INSTANTIATION_API ZtDynArrayBase<ZtDynArrayStream*>;
template class ZT_INSTANTIATION_API ZtDynArray<ZtDynArrayStream*>;
template class ZT_INSTANTIATION_API ZtDynPArray<ZtDynArrayStream>;

namespace {

// Runs f through a call that is never inlined. Write and Read hand it their rare paths (several
// units, new units), so that their common path does not save registers for them.
template <class F>
ZT_NOINLINE void OutOfLine(const F& f) {
  f();
}

}  // namespace

ZtDynArrayStreamEx::ZtDynArrayStreamEx(ZtLong unitSize)
    : m_unitSize(ZT_IN_CONTRACT(unitSize > 0, "ZtDynArrayStreamEx", "ZtDynArrayStreamEx",
                                "unit size", unitSize)
                     ? unitSize
                     : 1024),
      m_units(0, 10) {}

ZtDynArrayStreamEx::ZtDynArrayStreamEx(const ZtDynArrayStreamEx& src)
    : ZtStream(src), m_unitSize(src.m_unitSize), m_units(0, 10) {
  CopyUnits(src.m_units);
}

ZtDynArrayStreamEx& ZtDynArrayStreamEx::operator=(const ZtDynArrayStreamEx& src) {
  if (this == &src) return *this;
  CopyUnits(src.m_units);
  ZtStream::operator=(src);
  m_unitSize = src.m_unitSize;
  return *this;
}

ZtDynArrayStreamEx::~ZtDynArrayStreamEx() = default;

void ZtDynArrayStreamEx::CopyUnits(const ZtDynPArray<ZtDynArrayStream>& src) {
  // Clone into a scratch array first: if a clone fails, its destructor deletes the clones made so
  // far and this stream is untouched. Then hand the scratch array's buffer over whole.
  ZtDynPArray<ZtDynArrayStream> copy(0, 10);
  copy = src;
  m_units.Reset();
  const ZtLong n = copy.GetLength();
  m_units.Attach(n, copy.Detach());
}

void ZtDynArrayStreamEx::Reset() {
  MoveTo(0);
  m_length = 0;
  m_units.Reset();
}

template <class Step>
void ZtDynArrayStreamEx::ForEachChunk(ZtLong n, Step step) {
  // The unit cursor's walk, on a local index stored once at the end: it stops on an empty slot,
  // on a unit without room, or past the last unit, and otherwise ends after the last unit used.
  ZtDynArrayStream* const* const units = m_units.ZtDynArray::GetFirst();
  const ZtLong count = m_units.GetLength();
  ZtLong u = m_cur / m_unitSize;
  ZtLong offset = m_cur % m_unitSize;
  for (ZtLong done = 0; done < n && u >= 0 && u < count; ++u, offset = 0) {
    ZtDynArrayStream* unit = units[u];
    if (unit == nullptr) break;  // an emptied slot: nothing to copy to or from
    // The units are this stream's own array streams: their position is set in place, as their
    // MoveTo would (offset is never negative).
    unit->m_cur = offset;
    // What the unit's own Write or Read would copy: units hold exactly m_unitSize bytes, so the
    // chunk stays inside the unit's array without growing it.
    const ZtLong chunk = std::min(n - done, unit->m_array.GetLength() - offset);
    if (chunk <= 0) break;
    step(const_cast<char*>(unit->m_array.GetFirst()) + offset, done, chunk);
    done += chunk;
  }
  m_units.MoveTo(u);
}

template <class Step>
bool ZtDynArrayStreamEx::InOneUnit(ZtLong n, Step step) {
  const ZtLong u = m_cur / m_unitSize;
  const ZtLong offset = m_cur % m_unitSize;
  if (n <= 0 || m_cur < 0 || u >= m_units.GetLength() || n > m_unitSize - offset) return false;
  ZtDynArrayStream* unit = m_units.ZtDynArray::GetFirst()[u];
  if (unit == nullptr || n > unit->m_array.GetLength() - offset) return false;
  unit->m_cur = offset;
  step(const_cast<char*>(unit->m_array.GetFirst()) + offset, 0, n);
  m_units.MoveTo(u + 1);
  return true;
}

void ZtDynArrayStreamEx::Write(void* p, ZtLong n) {
  const char* bytes = static_cast<const char*>(p);
  const auto copyIn = [bytes](char* unitBytes, ZtLong done, ZtLong chunk) {
    zt::detail::CopyBytes(unitBytes, bytes + done, chunk);
  };
  if (InOneUnit(n, copyIn)) {
    if (m_cur + n > m_length) m_length = m_cur + n;  // no overflow: the unit holds the bytes
    return;
  }
  OutOfLine([this, n, &copyIn] {
    const ZtLong end = zt::detail::AddLength(m_cur, n);
    // Units up to the one holding the last byte, (end - 1) / unit size truncated: Write(p, 0) at
    // position 0 makes sure that unit 0 exists.
    if (end <= 0 || end > static_cast<std::int64_t>(m_units.GetLength()) * m_unitSize) {
      AddUnitsUpTo((end - 1) / m_unitSize);
    }
    ForEachChunk(n, copyIn);
    if (end > m_length) m_length = end;
  });
}

void ZtDynArrayStreamEx::AddUnitsUpTo(ZtLong last) {
  // A failed allocation leaves the units appended so far in place; only the unit being built
  // is released.
  while (m_units.GetLength() <= last) {
    std::unique_ptr<ZtDynArrayStream> unit(new ZtDynArrayStream(m_unitSize, 1024));
    unit->SetLength(m_unitSize);  // within the reserve: the unit's one allocation
    m_units.Append(unit.get());
    static_cast<void>(unit.release());  // now owned by m_units
  }
}

void ZtDynArrayStreamEx::Read(void* p, ZtLong n) {
  n = std::min(n, m_length - m_cur);
  char* bytes = static_cast<char*>(p);
  const auto copyOut = [bytes](const char* unitBytes, ZtLong done, ZtLong chunk) {
    zt::detail::CopyBytes(bytes + done, unitBytes, chunk);
  };
  if (!InOneUnit(n, copyOut)) OutOfLine([this, n, &copyOut] { ForEachChunk(n, copyOut); });
}
