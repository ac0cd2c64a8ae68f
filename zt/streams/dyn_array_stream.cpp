#include "zt/streams/dyn_array_stream.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

#include "zt/streams/internal/copy_bytes.h"

namespace {

// The capacity that storing bytes first .. end - 1 one at a time through the growing subscript
// leaves: byte `first` (the first one past the capacity) makes it first + 1 + unit, and every
// later byte that lands at the capacity adds 1 + unit again.
ZtLong GrownCapacity(ZtLong first, ZtLong end, ZtLong unit) {
  const std::int64_t step = std::int64_t{unit > 0 ? unit : 0} + 1;
  std::int64_t space = first + step;
  if (space < end) space += (end - space + step - 1) / step * step;
  if (space > std::numeric_limits<ZtLong>::max()) throw std::bad_alloc();
  return static_cast<ZtLong>(space);
}

}  // namespace

ZtDynArrayStream::ZtDynArrayStream(ZtLong spaceSize, ZtLong allocUnit)
    : m_array(spaceSize, allocUnit) {}

ZtDynArrayStream::ZtDynArrayStream(const ZtDynArrayStream& src) = default;

// Not defaulted: the array is copied first, so that a failed copy leaves position and length in
// step with the array.
ZtDynArrayStream& ZtDynArrayStream::operator=(  // NOLINT(modernize-use-equals-default)
    const ZtDynArrayStream& src) {
  m_array = src.m_array;
  ZtStream::operator=(src);
  return *this;
}

ZtDynArrayStream::~ZtDynArrayStream() = default;

void ZtDynArrayStream::Reset() {
  MoveTo(0);
  m_length = 0;
  m_array.Reset();
}

void ZtDynArrayStream::Write(void* p, ZtLong n) {
  if (n > 0) {
    const ZtLong end = zt::detail::AddLength(m_cur, n);
    const ZtLong space = m_array.GetSpaceSize();
    if (end > space) {
      m_array.SetSpaceSize(GrownCapacity(std::max(m_cur, space), end, m_array.GetAllocUnit()));
    }
    const ZtLong length = m_array.GetLength();
    if (end > length) m_array.ReAllocate(end);  // within the capacity: no allocation
    // The buffer is the array's own writable storage; GetFirst only hands it out as const.
    char* data = const_cast<char*>(m_array.GetFirst());
    if (m_cur > length) std::memset(data + length, 0, static_cast<std::size_t>(m_cur - length));
    zt::detail::CopyBytes(data + m_cur, p, n);
  }
  m_length = m_array.GetLength();
}

void ZtDynArrayStream::Read(void* p, ZtLong n) {
  const ZtLong count = std::min(n, m_array.GetLength() - m_cur);
  if (count > 0) zt::detail::CopyBytes(p, m_array.GetFirst() + m_cur, count);
}

void ZtDynArrayStream::SetLength(ZtLong n) {
  m_array.SetLength(n, true);
  m_length = m_array.GetLength();
}
