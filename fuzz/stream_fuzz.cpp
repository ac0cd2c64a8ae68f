// fuzz/stream_fuzz.cpp
//
// ZtDynArrayStream and ZtDynArrayStreamEx (small units) against a byte vector and a position:
// raw and typed writes and reads, moves past the end, Reset, SetLength, copies, and the array
// stream's capacity (a write grows it as storing its bytes one by one through the array's
// growing subscript would). The first byte picks the class.
#include <cstring>

#include "fuzz/driver.h"
#include "zt/streams/dyn_array_stream.h"
#include "zt/streams/dyn_array_stream_ex.h"

namespace {

using zt::fuzz::Input;
using zt::fuzz::Same;
using Bytes = std::vector<unsigned char>;

/// The array stream with its array's capacity in view.
class ArrayStream : public ZtDynArrayStream {
 public:
  using ZtDynArrayStream::ZtDynArrayStream;
  ZtLong Capacity() const { return m_array.GetSpaceSize(); }
};

template <class S>
struct World {
  static constexpr bool kArray = std::is_same_v<S, ArrayStream>;

  explicit World(Input& in) : unit(in.In(1, 9)), s(Make(unit)), cap(unit) {}
  static S Make(ZtLong unit) {
    if constexpr (kArray) return S(unit, unit);
    return S(unit);
  }
  void Draw(Input& in) {
    if (m.size() > 400) s.Reset(), m.clear(), pos = 0;
    n = static_cast<ZtLong>(m.size()), data.resize(in.In(0, 12)), k = in.In(0, n + 4);
    for (auto& b : data) b = in.Byte();
    // The block stream leaves skipped bytes unspecified: it writes only up to the end.
    writable = (!data.empty() || pos <= n) && (kArray || pos <= n);
  }
  void Check() { Expect(s, kArray ? cap : -1); }
  // Stores bytes at the position; skipped bytes read as 0. The capacity follows byte by byte.
  // Only a typed write moves the position on.
  void Write(const Bytes& bytes, bool typed) {
    m.resize(std::max(m.size(), pos + bytes.size()), 0);
    for (size_t b = 0; b < bytes.size(); ++b) {
      m[pos + b] = bytes[b];
      if (pos + ZtLong(b) >= cap) cap = pos + ZtLong(b) + 1 + unit;
    }
    if (typed) pos += static_cast<ZtLong>(bytes.size());
  }
  // Length, position and every byte, read back through the stream; a capacity < 0 is not checked.
  void Expect(S& stream, ZtLong capacity) const {
    Same(stream.GetCur(), pos), Same(stream.GetLength(), static_cast<ZtLong>(m.size()));
    Bytes all(m.size() + 1, 0xA5);
    stream.MoveTo(0), stream.Read(all.data(), static_cast<ZtLong>(all.size())), stream.MoveTo(pos);
    ZT_FUZZ_CHECK(std::equal(m.begin(), m.end(), all.begin()) && all.back() == 0xA5);
    if constexpr (kArray) ZT_FUZZ_CHECK(capacity < 0 || stream.Capacity() == capacity);
  }

  ZtLong unit;
  S s;
  Bytes m, data;  // the model; bytes to write
  ZtLong cap, pos = 0, n = 0, k = 0;
  bool writable = false;
};

template <class S, class W = World<S>>
std::vector<zt::fuzz::Op<W>> Ops() {
  return {
      {"MoveTo", [](W& w) { w.s.MoveTo(w.k - 3), w.pos = w.s.GetCur(); }},
      {"Write",
       [](W& w) {
         w.writable ? w.s.Write(w.data.data(), w.data.size()), w.Write(w.data, false) : void();
       }},
      {"<< short",
       [](W& w) {
         if (!w.writable || w.data.size() < 2) return;
         w.s << static_cast<short>(w.data[0] | w.data[1] << 8),
             w.Write(Bytes(&w.data[0], &w.data[2]), true);
       }},
      {"Read and >> ZtLong",  // both start at the position
       [](W& w) {
         const auto count = static_cast<ZtLong>(w.data.size());
         Bytes got(w.data.size() + 4, 0xA5), want = got;  // the bytes read, then v's
         for (ZtLong b = 0; b < count + 4; ++b) {
           const ZtLong at = w.pos + (b < count ? b : b - count);
           want[b] = at < w.n    ? w.m[at]
                     : b < count ? 0xA5
                                 : 0xFF;  // v keeps its bytes past the end
         }
         ZtLong v = -1;
         w.s.Read(got.data(), count), w.s >> v, std::memcpy(&got[count], &v, 4);
         Same(got, want), w.pos += 4;
       }},
      {"Reset", [](W& w) { w.s.Reset(), w.m.clear(), w.pos = 0; }},
      {"SetLength",
       [](W& w) {
         if constexpr (W::kArray) w.cap = w.k % (w.n + 1), w.s.SetLength(w.cap), w.m.resize(w.cap);
       }},
      {"copy and assign",  // an array stream's copy and assignment size the array exactly
       [](W& w) {
         S copy(w.s), other = W::Make(w.unit);
         w.Expect(copy, W::kArray ? w.n : -1), other = w.s, w.Expect(other, -1), w.s = copy;
         if (W::kArray) w.cap = w.n;
       }},
  };
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const auto kArray = Ops<ArrayStream>();
  static const auto kBlocks = Ops<ZtDynArrayStreamEx>();
  return zt::fuzz::PlayAny(data, size, kArray, kBlocks);
}
