// zt/streams/stream.h
//
// ZtStream: the root of the byte streams. A position (m_cur, never negative) and a length over
// byte storage that a derived class supplies through the raw Write and Read; typed writes and
// reads of char, bool, short, ZtLong and double built on them, with << and >> as shorthand.
//
// Byte layout, the same on every host: values follow each other with no tags, padding or
// lengths. char and bool take 1 byte (bool: 1 or 0), short 2, ZtLong 4 (two's complement), double
// 8 (IEEE 754), all little-endian. The raw Write and Read never move the position; a typed call
// moves it by the value's width after the raw call, even when a read found fewer bytes: the
// destination keeps its old high-order bytes and IsOut() reports the position past the end.
//
//   s << ZtLong{7} << 2.5;  s.MoveToFirst();
//   ZtLong n;  double d;  s >> n >> d;       // 7, 2.5
//
// A plain ZtStream stores nothing: its Write and Read do nothing. MoveTo clamps negative
// positions to 0 and has no upper bound. The comparison operators always answer false. Callers
// test IsOut() before a typed read: the checked build reports one that runs past the end
// (zt/checked.h), with the position it started from.
#ifndef ZT_STREAMS_STREAM_H_
#define ZT_STREAMS_STREAM_H_

#include <cstdint>

#include "zt/checked.h"
#include "zt/config.h"
#include "zt/platform/byte_order.h"

/// Abstract positioned byte stream with a fixed typed layout; storage comes from derived classes.
class ZT_API ZtStream {
 public:
  ZtStream() = default;
  ZtStream(const ZtStream& src) = default;
  ZtStream& operator=(const ZtStream& src) = default;

  // ---- The virtual interface, in slot order ----------------------------------------------------

  // The typed calls and MoveTo are defined inline so that a caller that knows the stream's type
  // reaches the raw Write and Read without a call per layer; they stay virtual slots.

  /// Position i; a negative i is taken as 0. May stand at or past the end.
  virtual void MoveTo(ZtLong i) { m_cur = i < 0 ? 0 : i; }
  /// Position 0 and length 0.
  virtual void Reset();
  /// Stores the n bytes of p at the position, growing the stream as needed. Does not move.
  virtual void Write(void* p, ZtLong n);
  /// Copies up to n bytes from the position into p, stopping at the end; the rest of p is left
  /// as it was. Does not move.
  virtual void Read(void* p, ZtLong n);
  virtual void WriteChar(char c) { WriteValue(c); }
  /// Stores the byte 1 or 0.
  virtual void WriteBool(bool b) { WriteValue(static_cast<char>(b ? 1 : 0)); }
  virtual void WriteShort(short v) { WriteValue(v); }
  virtual void WriteLong(ZtLong v) { WriteValue(v); }
  virtual void WriteDouble(double v) { WriteValue(v); }
  virtual void ReadChar(char& c) { ReadValue(c, "ReadChar"); }
  /// Any non-zero byte reads as true.
  virtual void ReadBool(bool& b) {
    char byte = b ? 1 : 0;
    ReadValue(byte, "ReadBool");
    b = byte != 0;
  }
  virtual void ReadShort(short& v) { ReadValue(v, "ReadShort"); }
  virtual void ReadLong(ZtLong& v) { ReadValue(v, "ReadLong"); }
  virtual void ReadDouble(double& v) { ReadValue(v, "ReadDouble"); }
  virtual ~ZtStream();

  // ---- Position ------------------------------------------------------------------------------

  ZtLong GetCur() const { return m_cur; }
  ZtLong GetLength() const { return m_length; }
  /// True when no byte stands at the position (always for an empty stream).
  bool IsOut() const { return m_cur >= m_length; }
  void MoveToFirst() { MoveTo(0); }
  void MoveToNext(ZtLong n) { MoveTo(m_cur + n); }
  /// Steps back n bytes, stopping at 0.
  void MoveToPre(ZtLong n) { MoveTo(m_cur - n); }
  /// On the last byte (0 when empty).
  void MoveToLast() { MoveTo(m_length - 1); }
  /// Just past the last byte: the place to append.
  void MoveOut() { MoveTo(m_length); }

  /// Streams are not comparable: all four comparisons answer false.
  bool operator==(const ZtStream& other) const;
  bool operator!=(const ZtStream& other) const;
  bool operator<(const ZtStream& other) const;
  bool operator>(const ZtStream& other) const;

  // ---- Shorthand through the virtual slots ---------------------------------------------------

  ZtStream& operator<<(char c) {
    WriteChar(c);
    return *this;
  }
  ZtStream& operator<<(bool b) {
    WriteBool(b);
    return *this;
  }
  ZtStream& operator<<(short v) {
    WriteShort(v);
    return *this;
  }
  ZtStream& operator<<(ZtLong v) {
    WriteLong(v);
    return *this;
  }
  ZtStream& operator<<(double v) {
    WriteDouble(v);
    return *this;
  }
  ZtStream& operator>>(char& c) {
    ReadChar(c);
    return *this;
  }
  ZtStream& operator>>(bool& b) {
    ReadBool(b);
    return *this;
  }
  ZtStream& operator>>(short& v) {
    ReadShort(v);
    return *this;
  }
  ZtStream& operator>>(ZtLong& v) {
    ReadLong(v);
    return *this;
  }
  ZtStream& operator>>(double& v) {
    ReadDouble(v);
    return *this;
  }

 protected:
  ZtLong m_cur = 0;
  ZtLong m_length = 0;

 private:
  // A typed write: the value's little-endian bytes through the raw Write, then the position
  // moves by the width.
  template <class T>
  void WriteValue(T v) {
    unsigned char bytes[sizeof(T)];
    zt::detail::StoreLittleEndian(v, bytes);
    Write(bytes, sizeof(T));
    MoveTo(m_cur + static_cast<ZtLong>(sizeof(T)));
  }
  // A typed read. The bytes start as the destination's own, so that a read cut short by the end
  // of the data fills only the low-order bytes; the position moves by the full width regardless.
  // `op` names the typed read in the checked build's report of such a read.
  template <class T>
  void ReadValue(T& v, [[maybe_unused]] const char* op) {
    ZT_REPORT_UNLESS(m_length - std::int64_t{m_cur} >= std::int64_t{sizeof(T)}, op, "ZtStream",
                     "position", m_cur);
    unsigned char bytes[sizeof(T)];
    zt::detail::StoreLittleEndian(v, bytes);
    Read(bytes, sizeof(T));
    v = zt::detail::LoadLittleEndian<T>(bytes);
    MoveTo(m_cur + static_cast<ZtLong>(sizeof(T)));
  }
};

#endif  // ZT_STREAMS_STREAM_H_
