// zt/config.h
//
// Build-wide definitions every zt header relies on:
//   ZtLong  - the library's 32-bit index, length and count type (long on Windows, where it is
//             32 bits wide; std::int32_t elsewhere).
//   ZT_NOINLINE - keeps a rare path out of line.
//   ZT_API  - marks what the shared library exports. Everything else is built hidden.
//             Exported template instantiations are declared `extern template class ZT_API`
//             in the headers and defined with ZT_INSTANTIATION_API in the library.
//
//   ZtLong n = array.GetLength();
//   class ZT_API ZtSomething { ... };
#ifndef ZT_CONFIG_H_
#define ZT_CONFIG_H_

#include <cstdint>

#if defined(_WIN32)
using ZtLong = long;
#else
using ZtLong = std::int32_t;
#endif
static_assert(sizeof(ZtLong) == 4, "ZtLong must be 32 bits wide");

// The headers need run-time type information: copies between the owning containers and splices
// between lists decide by the dynamic class (dynamic_cast), and the searches recognise a plain
// ZtDynArray by its type (typeid). A client built without it gets this error, not a stray one.
#if !defined(__GXX_RTTI) && !defined(_CPPRTTI)
#error "zt's headers need run-time type information: build without -fno-rtti or /GR-"
#endif

// ZT_NOINLINE keeps a function out of line. Rare paths (growth) use it, so that the loops that
// inline their callers keep their values in registers. The static analyzer, which does not look
// into such a function, sees it inline.
#if defined(__clang_analyzer__)
#define ZT_NOINLINE
#elif defined(_MSC_VER) && !defined(__clang__)
#define ZT_NOINLINE __declspec(noinline)
#else
#define ZT_NOINLINE __attribute__((noinline))
#endif

#if defined(ZT_STATIC)
#define ZT_API
#elif defined(_WIN32)
#if defined(ZT_BUILDING)
#define ZT_API __declspec(dllexport)
#else
#define ZT_API __declspec(dllimport)
#endif
#else
#define ZT_API __attribute__((visibility("default")))
#endif

// ZT_INSTANTIATION_API goes on the explicit instantiation definitions inside the library. GCC
// takes the visibility or the dllexport from the extern template declaration in the header and
// rejects a repeat on the definition (on MinGW too); MSVC and Clang on Windows need the export
// on the definition as well.
#if defined(_WIN32) && !defined(ZT_STATIC) && (defined(_MSC_VER) || defined(__clang__))
#define ZT_INSTANTIATION_API ZT_API
#else
#define ZT_INSTANTIATION_API
#endif

#endif  // ZT_CONFIG_H_
