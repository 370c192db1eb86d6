// What every public header of libruxcomp shares.
#ifndef RUXCOMP_API_H_
#define RUXCOMP_API_H_

// Marks what the library exports; everything else in it is hidden.
#define RUX_API __attribute__((visibility("default")))

// Standard strings, vectors and maps pass between the library and a program: both must be compiled
// with the same C++ library in the same configuration, or the program crashes or reads garbage. The
// library is compiled with libstdc++ as it comes unless a RUXCOMP_WITH_... is defined; pkg-config
// and the CMake package define those of the library that they belong to.
#ifdef __cplusplus
#include <cstddef>  // defines the macros that identify the C++ library
#if defined(_LIBCPP_VERSION) != defined(RUXCOMP_WITH_LIBCXX)
#error \
    "libruxcomp and this program use different C++ libraries, libstdc++ and libc++: \
compile without -stdlib=libc++, or build libruxcomp with it"
#endif
#if defined(_GLIBCXX_DEBUG) != defined(RUXCOMP_WITH_GLIBCXX_DEBUG)
#error \
    "libruxcomp and this program differ in _GLIBCXX_DEBUG: compile with _GLIBCXX_ASSERTIONS \
instead, which changes no type, or build libruxcomp with _GLIBCXX_DEBUG"
#endif
#if (defined(_GLIBCXX_USE_CXX11_ABI) && !_GLIBCXX_USE_CXX11_ABI) != \
    defined(RUXCOMP_WITH_OLD_STRINGS)
#error \
    "libruxcomp and this program differ in _GLIBCXX_USE_CXX11_ABI: compile without it, or build \
libruxcomp with it"
#endif
#endif

#endif  // RUXCOMP_API_H_
