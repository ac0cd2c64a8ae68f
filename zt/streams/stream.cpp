#include "zt/streams/stream.h"

#include "zt/platform/byte_order.h"

namespace {

// A typed write: the value's little-endian bytes through the raw Write, then the position moves
// by the width.
template <class T>
void WriteValue(ZtStream& s, T v) {
  unsigned char bytes[sizeof(T)];
  zt::detail::StoreLittleEndian(v, bytes);
  s.Write(bytes, sizeof(T));
  s.MoveTo(s.GetCur() + static_cast<ZtLong>(sizeof(T)));
}

// A typed read. The bytes start as the destination's own, so that a read cut short by the end of
// the data fills only the low-order bytes; the position moves by the full width regardless.
template <class T>
void ReadValue(ZtStream& s, T& v) {
  unsigned char bytes[sizeof(T)];
  zt::detail::StoreLittleEndian(v, bytes);
  s.Read(bytes, sizeof(T));
  v = zt::detail::LoadLittleEndian<T>(bytes);
  s.MoveTo(s.GetCur() + static_cast<ZtLong>(sizeof(T)));
}

}  // namespace

ZtStream::~ZtStream() = default;

void ZtStream::MoveTo(ZtLong i) { m_cur = i < 0 ? 0 : i; }

void ZtStream::Reset() {
  MoveTo(0);
  m_length = 0;
}

void ZtStream::Write(void* /*p*/, ZtLong /*n*/) {}
void ZtStream::Read(void* /*p*/, ZtLong /*n*/) {}

void ZtStream::WriteChar(char c) { WriteValue(*this, c); }
void ZtStream::WriteBool(bool b) { WriteValue(*this, static_cast<char>(b ? 1 : 0)); }
void ZtStream::WriteShort(short v) { WriteValue(*this, v); }
void ZtStream::WriteLong(ZtLong v) { WriteValue(*this, v); }
void ZtStream::WriteDouble(double v) { WriteValue(*this, v); }

void ZtStream::ReadChar(char& c) { ReadValue(*this, c); }
void ZtStream::ReadShort(short& v) { ReadValue(*this, v); }
void ZtStream::ReadLong(ZtLong& v) { ReadValue(*this, v); }
void ZtStream::ReadDouble(double& v) { ReadValue(*this, v); }

void ZtStream::ReadBool(bool& b) {
  char byte = b ? 1 : 0;
  ReadValue(*this, byte);
  b = byte != 0;
}

bool ZtStream::operator==(const ZtStream& /*other*/) const { return false; }
bool ZtStream::operator!=(const ZtStream& /*other*/) const { return false; }
bool ZtStream::operator<(const ZtStream& /*other*/) const { return false; }
bool ZtStream::operator>(const ZtStream& /*other*/) const { return false; }
