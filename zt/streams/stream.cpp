#include "zt/streams/stream.h"

ZtStream::~ZtStream() = default;

void ZtStream::Reset() {
  MoveTo(0);
  m_length = 0;
}

void ZtStream::Write(void* /*p*/, ZtLong /*n*/) {}
void ZtStream::Read(void* /*p*/, ZtLong /*n*/) {}

bool ZtStream::operator==(const ZtStream& /*other*/) const { return false; }
bool ZtStream::operator!=(const ZtStream& /*other*/) const { return false; }
bool ZtStream::operator<(const ZtStream& /*other*/) const { return false; }
bool ZtStream::operator>(const ZtStream& /*other*/) const { return false; }
