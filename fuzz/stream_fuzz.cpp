// fuzz/stream_fuzz.cpp
//
// ZtDynArrayStream and ZtDynArrayStreamEx (small units) against a byte vector and a position:
// raw and typed writes and reads, moves past the end, Reset, SetLength, copies, and the array
// stream's capacity (a write grows it as storing its bytes one by one through the array's
// growing subscript would). The first input byte picks the class.
#include <algorithm>
#include <cstring>

#include "fuzz/driver.h"
#include "zt/streams/dyn_array_stream.h"
#include "zt/streams/dyn_array_stream_ex.h"

namespace {

using zt::fuzz::Input;
using Bytes = std::vector<unsigned char>;

/// The array stream with its array's capacity in view.
class ArrayStream : public ZtDynArrayStream {
 public:
  using ZtDynArrayStream::ZtDynArrayStream;
  ZtLong Capacity() const { return m_array.GetSpaceSize(); }
};

template <class S>
class Run {
  static constexpr bool kArray = std::is_same_v<S, ArrayStream>;

 public:
  explicit Run(Input& in) : m_unit(in.In(1, 9)), m_s(Make(m_unit)) { m_cap = m_unit; }

  void Step(Input& in, uint8_t op) {
    if (m_m.size() > 400) Reset();
    const auto n = static_cast<ZtLong>(m_m.size());
    Bytes data(static_cast<size_t>(in.In(0, 12)));
    for (auto& b : data) b = in.Byte();
    const auto k = static_cast<ZtLong>(data.size());
    // The block stream leaves skipped bytes unspecified: it writes only up to the end.
    const bool writable = (k > 0 || m_pos <= n) && (kArray || m_pos <= n);
    switch (op % 8) {
      case 0:
        m_s.MoveTo(in.In(-3, n + 4)), m_pos = m_s.GetCur();
        break;
      case 1:
        if (writable) m_s.Write(data.data(), k), Write(data);
        break;
      case 2:
        if (writable && k >= 2) {
          m_s << static_cast<short>(data[0] | data[1] << 8);
          Write(Bytes(data.begin(), data.begin() + 2));
          m_pos += 2;
        }
        break;
      case 3: {  // a read copies what lies before the end; a typed read moves on regardless
        Bytes got(static_cast<size_t>(k), 0xA5), want = got;
        m_s.Read(got.data(), k);
        for (ZtLong b = 0; b < k && m_pos + b < n; ++b) want[b] = m_m[m_pos + b];
        ZT_FUZZ_CHECK(got == want);
        ZtLong v = -1;
        m_s >> v;
        for (ZtLong b = 0; b < 4; ++b)
          want.resize(4, 0xFF), want[b] = m_pos + b < n ? m_m[m_pos + b] : 0xFF;
        ZT_FUZZ_CHECK(std::memcmp(&v, want.data(), 4) == 0);
        m_pos += 4;
        break;
      }
      case 4:
        Reset();
        break;
      case 5:
        if constexpr (kArray) {
          const ZtLong len = in.In(0, n);
          m_s.SetLength(len);
          m_m.resize(static_cast<size_t>(len));
          m_cap = len;
        }
        break;
      case 6: {  // a copy of an array stream has an exact-size array with the default unit 10
        S copy(m_s);
        Expect(copy, kArray ? n : -1);
        if (!kArray) break;
        m_s = copy;  // assignment sizes the array exactly too
        m_cap = n;
        break;
      }
      default: {
        S other = Make(m_unit);
        other = m_s;
        Expect(other, -1);
        break;
      }
    }
    Expect(m_s, kArray ? m_cap : -1);
  }

 private:
  static S Make(ZtLong unit) {
    if constexpr (kArray) {
      return S(unit, unit);
    } else {
      return S(unit);
    }
  }
  void Reset() {
    m_s.Reset();
    m_m.clear();
    m_pos = 0;
  }
  // Stores bytes at the position; skipped bytes read as 0. The capacity follows byte by byte.
  void Write(const Bytes& data) {
    const auto end = static_cast<size_t>(m_pos) + data.size();
    if (end > m_m.size()) m_m.resize(end, 0);
    std::copy(data.begin(), data.end(), m_m.begin() + m_pos);
    for (auto b = static_cast<ZtLong>(m_pos); b < static_cast<ZtLong>(end); ++b) {
      if (b >= m_cap) m_cap = b + 1 + m_unit;
    }
  }
  void Expect(S& s, ZtLong cap) const {
    ZT_FUZZ_CHECK(s.GetCur() == m_pos && s.GetLength() == static_cast<ZtLong>(m_m.size()));
    Bytes all(m_m.size() + 1, 0xA5);
    s.MoveTo(0);
    s.Read(all.data(), static_cast<ZtLong>(all.size()));
    s.MoveTo(m_pos);
    ZT_FUZZ_CHECK(std::equal(m_m.begin(), m_m.end(), all.begin()) && all.back() == 0xA5);
    if constexpr (kArray) ZT_FUZZ_CHECK(cap < 0 || s.Capacity() == cap);
  }

  ZtLong m_unit;
  S m_s;
  Bytes m_m;
  ZtLong m_pos = 0;
  ZtLong m_cap;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  return in.Bool() ? zt::fuzz::Play<Run<ZtDynArrayStreamEx>>(in)
                   : zt::fuzz::Play<Run<ArrayStream>>(in);
}
