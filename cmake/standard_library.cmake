# Standard strings, vectors and maps cross the boundary of the library: whoever includes its headers has
# to be compiled with the same C++ library in the same form. ruxcomp/api.h refuses what differs from
# libstdc++ as it comes; RUX_STANDARD_LIBRARY lists the macros that say how this build differs from that,
# for the headers and for the hosts.
include(CheckCXXSourceCompiles)

set(RUX_STANDARD_LIBRARY)
foreach(row
    "LIBCXX;defined _LIBCPP_VERSION"
    "GLIBCXX_DEBUG;defined _GLIBCXX_DEBUG"
    "OLD_STRINGS;defined _GLIBCXX_USE_CXX11_ABI && !_GLIBCXX_USE_CXX11_ABI")
  list(GET row 0 name)
  list(GET row 1 condition)
  check_cxx_source_compiles("
    #include <cstddef>
    #if !(${condition})
    #error no
    #endif
    int main() {}" RUX_HAS_${name})
  if(RUX_HAS_${name})
    list(APPEND RUX_STANDARD_LIBRARY RUXCOMP_WITH_${name})
  endif()
endforeach()
