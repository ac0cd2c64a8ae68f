// fuzz/bits_fuzz.cpp
//
// Two ZtBitArray (1-, 2- and 4-bit units) or two ZtBit2dArray against a model that keeps every
// bit of the buffer as 0, 1 or unknown (the bytes that ReAllocate adds are unspecified): unit i
// is bits i * size .. i * size + size - 1, bit b is bit b % 8 of byte b / 8, SetValue ORs, and
// the conversions read the first bytes little-endian. An array borrows its buffer from the
// harness or owns it; it owns every buffer it allocates itself, and the sanitizers catch a
// borrowed buffer freed or an owned one leaked. The first byte picks the class.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <deque>
#include <memory>

#include "fuzz/driver.h"
#include "zt/bits/bit_array.h"

namespace {

using zt::fuzz::Input;
using zt::fuzz::Same;

size_t Count(ZtLong n) { return static_cast<size_t>(n); }

// The bits of one array's buffer: 0, 1 or -1 (unknown), GetByteSize() * 8 of them.
struct Model {
  ZtLong size = 1, num = 0, rows = 0, cols = 0;
  bool own = true;
  std::vector<int> bits;

  ZtLong Bytes() const { return (num * size + 7) / 8; }
  void Resize(ZtLong n, int fill) { num = n, bits.resize(Count(Bytes() * 8), fill); }
  void Fill(int v) { std::fill(bits.begin(), bits.end(), v); }
  void Or(ZtLong unit, int v) {
    for (ZtLong k = 0; k < size; ++k) {
      if ((v >> k & 1) != 0) bits[Count(unit * size + k)] = 1;
    }
  }
  // The value of `n` bits from bit `at`, or -1 when one of them is unknown.
  long long Read(ZtLong at, ZtLong n) const {
    long long v = 0;
    for (ZtLong k = n - 1; k >= 0; --k) {
      const ZtLong b = at + k;
      const int bit = b < static_cast<ZtLong>(bits.size()) ? bits[static_cast<size_t>(b)] : 0;
      if (bit < 0) return -1;
      v = v << 1 | bit;
    }
    return v;
  }
  void Load(const char* p, ZtLong bytes) {
    for (ZtLong b = 0; b < bytes * 8; ++b) bits[static_cast<size_t>(b)] = p[b / 8] >> (b % 8) & 1;
  }
};

template <class A>
struct World {
  static constexpr bool k2d = std::is_same_v<A, ZtBit2dArray>;

  explicit World(Input& in) {
    for (int j = 0; j < 2; ++j) {
      const ZtLong num = in.In(-2, 24), unitSize = Size(in);
      Make(j, num, unitSize, in.In(0, 6));
    }
  }
  ~World() {
    for (auto& a : arrays) a.reset();  // before the borrowed buffers go
  }
  static ZtLong Size(Input& in) { return ZtLong{1} << in.In(0, 2); }
  void Make(int k, ZtLong n, ZtLong size, ZtLong cols) {
    Model& m = models[k];
    m = Model{};
    if constexpr (k2d) {
      arrays[k] = std::make_unique<A>(n / 4, cols, size);
      m.rows = n / 4, m.cols = cols, n = m.rows * cols;
    } else {
      arrays[k] = std::make_unique<A>(n, size);
    }
    m.size = size, m.Resize(n < 0 ? 0 : n, 0);
  }
  // Bytes from the input, in a new[] buffer for an owning array or a harness one to lend.
  char* Buffer(Input& in, ZtLong bytes, bool owned) {
    char* p = owned ? new char[static_cast<size_t>(bytes) + 1]
                    : pool.emplace_back(static_cast<size_t>(bytes) + 1, '\0').data();
    for (ZtLong i = 0; i < bytes; ++i) p[i] = static_cast<char>(in.Byte());
    return p;
  }
  void Draw(Input& in) {
    k = in.Bool() ? 1 : 0;
    a = arrays[k].get(), m = &models[k];
    n = in.In(-1, 24), size = Size(in), bytes = in.In(0, 6), v = static_cast<char>(in.Byte());
    unit = m->num > 0 ? in.In(0, m->num - 1) : 0;
    bit = m->num > 0 ? in.In(0, m->num * m->size - 1) : 0;
    in_ = &in;
  }
  void Check() {
    for (int j = 0; j < 2; ++j) {
      A& x = *arrays[j];  // operator[] is a non-const member
      const Model& y = models[j];
      Same(x.GetLength(), y.num), Same(x.GetUnitSize(), y.size),
          Same(x.GetBitSize(), y.num * y.size);
      Same(x.GetByteSize(), y.Bytes()), Same(ZtBitArray::BitToByte(y.num * y.size), y.Bytes());
      Same(x.IsValidIndex(y.num - 1), y.num > 0), Same(x.IsValidIndex(y.num), false);
      if constexpr (k2d) Same(x.GetRowNum(), y.rows), Same(x.GetColNum(), y.cols);
      for (ZtLong i = 0; i < y.num; ++i) {
        const long long want = y.Read(i * y.size, y.size);
        ZT_FUZZ_CHECK(want < 0 || x.GetValue(i) == want);
        if constexpr (k2d) ZT_FUZZ_CHECK(want < 0 || x(i / y.cols, i % y.cols) == want);
      }
      for (ZtLong b = 0; b < y.num * y.size; ++b) {
        ZT_FUZZ_CHECK(y.bits[static_cast<size_t>(b)] < 0 ||
                      x[b] == (y.bits[static_cast<size_t>(b)] == 1));
      }
      CheckFront(x, y);
    }
  }
  // The conversions, each where its bytes are known; bytes past the buffer read as 0.
  static void CheckFront(const A& x, const Model& y) {
    const long long c = y.Read(0, 8), i = y.Read(0, 32), lo = y.Read(0, 32), hi = y.Read(32, 32);
    ZT_FUZZ_CHECK(c < 0 || static_cast<unsigned char>(static_cast<char>(x)) == c);
    ZT_FUZZ_CHECK(i < 0 || static_cast<unsigned>(static_cast<int>(x)) == i);
    const auto same = [](auto got, unsigned long long pattern) {  // bit for bit, or both NaN
      using Bits = std::conditional_t<sizeof got == 4, std::uint32_t, std::uint64_t>;
      Bits bits = 0;
      decltype(got) want;
      std::memcpy(&bits, &got, sizeof got), std::memcpy(&want, &pattern, sizeof want);
      return std::isnan(got) ? std::isnan(want) : bits == static_cast<Bits>(pattern);
    };
    ZT_FUZZ_CHECK(i < 0 || same(static_cast<float>(x), static_cast<unsigned long long>(i)));
    ZT_FUZZ_CHECK(lo < 0 || hi < 0 ||
                  same(static_cast<double>(x), static_cast<unsigned long long>(hi << 32 | lo)));
    const char* p = x;
    ZT_FUZZ_CHECK(static_cast<const void*>(static_cast<const int*>(x)) == p &&
                  static_cast<const void*>(static_cast<const double*>(x)) == p);
    ZT_FUZZ_CHECK(p != nullptr || y.Bytes() == 0);
  }

  std::unique_ptr<A> arrays[2];
  Model models[2];
  std::deque<std::vector<char>> pool;  // buffers lent to the arrays, alive to the end
  int k = 0;
  A* a = nullptr;
  Model* m = nullptr;
  Input* in_ = nullptr;
  ZtLong n = 0, size = 1, bytes = 0, unit = 0, bit = 0;
  char v = 0;
};

template <class A, class W = World<A>>
std::vector<zt::fuzz::Op<W>> Ops() {
  std::vector<zt::fuzz::Op<W>> ops = {
      {"SetValue",  // the value is cut to the unit's width
       [](W& w) {
         if (w.m->num == 0) return;
         if constexpr (W::k2d) {
           w.a->SetValue(w.unit / w.m->cols, w.unit % w.m->cols, w.v);
         } else {
           w.a->SetValue(w.unit, w.v);
         }
         w.m->Or(w.unit, w.v);
       }},
      {"SetAll(v)",
       [](W& w) {
         w.a->SetAll(w.v);
         for (ZtLong i = 0; i < w.m->num; ++i) w.m->Or(i, w.v);
       }},
      {"SetAll", [](W& w) { w.a->SetAll(), w.m->Fill(1); }},
      {"ResetAll", [](W& w) { w.a->ResetAll(), w.m->Fill(0); }},
      {"Set or Reset",
       [](W& w) {
         if (w.m->num == 0) return;
         w.v & 1 ? w.a->Set(w.bit) : w.a->Reset(w.bit);
         w.m->bits[static_cast<size_t>(w.bit)] = w.v & 1;
       }},
      {"operator=",  // the other array or itself
       [](W& w) {
         const int from = w.v & 1 ? w.k : 1 - w.k;
         if (from == w.k) return void(*w.a = *w.a);
         const Model& o = w.models[from];
         Model& m = *w.m;
         m.own = m.own || (m.num * m.size / o.size != o.num && o.Bytes() > 0);
         const bool own = m.own;
         *w.a = *w.arrays[from], m = o, m.own = own;
       }},
      {"copy construction",
       [](W& w) {
         auto copy = std::make_unique<A>(*w.arrays[1 - w.k]);
         w.arrays[w.k] = std::move(copy), *w.m = w.models[1 - w.k], w.m->own = true;
       }},
      {"construction", [](W& w) { w.Make(w.k, w.n, w.size, w.bytes); }},
  };
  if constexpr (!W::k2d) {
    const std::vector<zt::fuzz::Op<W>> flat = {
        {"ReAllocate",  // keeps the first bytes; those added are unknown
         [](W& w) {
           const ZtLong n = w.n < 0 ? 0 : w.n;
           w.a->ReAllocate(w.n);
           if (n == w.m->num) return;
           const ZtLong keep = std::min(w.m->Bytes(), (n * w.m->size + 7) / 8) * 8;
           w.m->bits.resize(static_cast<size_t>(keep)), w.m->Resize(n, -1);
           w.m->own = w.m->own || n > 0;
         }},
        {"SetUnitSize",  // the same bits, in whole units of the new size
         [](W& w) {
           w.a->SetUnitSize(w.size);
           w.m->num = w.m->num * w.m->size / w.size, w.m->size = w.size;
           w.m->bits.resize(Count(w.m->Bytes() * 8));
         }},
        {"Attach",  // an owning array adopts a new[] buffer, a borrowing one borrows
         [](W& w) {
           char* p = w.Buffer(*w.in_, w.bytes, w.m->own);
           w.a->Attach(w.bytes, p);
           w.m->bits.assign(Count(w.bytes * 8), 0), w.m->Load(p, w.bytes);
           w.m->num = w.bytes * 8 / w.m->size;
           w.m->bits.resize(Count(w.m->Bytes() * 8));
         }},
        {"Detach",
         [](W& w) {
           Model& m = *w.m;
           char* p = w.a->Detach();
           ZT_FUZZ_CHECK(p != nullptr || m.Bytes() == 0);
           for (ZtLong b = 0; p != nullptr && b < m.Bytes() * 8; ++b) {
             const int bit = m.bits[static_cast<size_t>(b)];
             ZT_FUZZ_CHECK(bit < 0 || (p[b / 8] >> (b % 8) & 1) == bit);
           }
           if (m.own) delete[] p;
           m.num = 0, m.bits.clear();
         }},
        {"over bytes",  // attached: borrows the harness's bytes; otherwise owns a copy
         [](W& w) {
           const bool attach = w.v & 1;
           char* p = w.Buffer(*w.in_, w.bytes, false);
           w.arrays[w.k] = std::make_unique<A>(p, w.bytes, attach);
           *w.m = Model{}, w.m->own = !attach, w.m->Resize(w.bytes * 8, 0), w.m->Load(p, w.bytes);
         }},
    };
    ops.insert(ops.end(), flat.begin(), flat.end());
  }
  return ops;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const auto kFlat = Ops<ZtBitArray>();
  static const auto kGrid = Ops<ZtBit2dArray>();
  return zt::fuzz::PlayAny(data, size, kFlat, kGrid);
}
