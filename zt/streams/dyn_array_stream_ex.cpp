#include "zt/streams/dyn_array_stream_ex.h"

#include <algorithm>
#include <memory>

#include "zt/containers/array.h"  // the explicit instantiations need every member
#include "zt/containers/internal/element_ops.h"

template class ZT_INSTANTIATION_API ZtDynArrayBase<ZtDynArrayStream*>;
template class ZT_INSTANTIATION_API ZtDynArray<ZtDynArrayStream*>;
template class ZT_INSTANTIATION_API ZtDynPArray<ZtDynArrayStream>;

ZtDynArrayStreamEx::ZtDynArrayStreamEx(ZtLong unitSize)
    : m_unitSize(unitSize > 0 ? unitSize : 1024), m_units(0, 10) {}

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
  m_units.MoveTo(m_cur / m_unitSize);
  ZtLong offset = m_cur % m_unitSize;
  for (ZtLong done = 0; done < n && !m_units.IsOut(); m_units.MoveToNext(), offset = 0) {
    ZtDynArrayStream* unit = m_units.GetCurData();
    unit->MoveTo(offset);
    const ZtLong chunk = std::min(n - done, m_unitSize - offset);
    step(*unit, done, chunk);
    done += chunk;
  }
}

void ZtDynArrayStreamEx::Write(void* p, ZtLong n) {
  const ZtLong end = zt::detail::AddLength(m_cur, n);
  // The unit of the last byte; (end - 1) / unit size truncates, so Write(p, 0) at 0 means unit 0.
  const ZtLong last = (end - 1) / m_unitSize;
  const ZtLong units = m_units.GetLength();
  try {
    while (m_units.GetLength() <= last) {
      std::unique_ptr<ZtDynArrayStream> unit(new ZtDynArrayStream(m_unitSize, 1024));
      unit->SetLength(m_unitSize);  // within the reserve: the unit's one allocation
      m_units.Append(unit.get());
      static_cast<void>(unit.release());  // now owned by m_units
    }
  } catch (...) {
    m_units.ReAllocate(units);  // deletes the units this call added
    throw;
  }
  char* bytes = static_cast<char*>(p);
  ForEachChunk(n, [bytes](ZtDynArrayStream& unit, ZtLong done, ZtLong chunk) {
    unit.Write(bytes + done, chunk);
  });
  if (end > m_length) m_length = end;
}

void ZtDynArrayStreamEx::Read(void* p, ZtLong n) {
  n = std::min(n, m_length - m_cur);
  char* bytes = static_cast<char*>(p);
  ForEachChunk(n, [bytes](ZtDynArrayStream& unit, ZtLong done, ZtLong chunk) {
    unit.Read(bytes + done, chunk);
  });
}
