# guards.sh CXX INCLUDE: programs that are compiled with another C++ library than libruxcomp, or with the
# same in another form, are refused with the reason; those that say that the library is so, too, are not.
set -eu
cxx=$1
include=$2
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
echo '#include <ruxcomp/api.h>' >"$folder/host.cpp"

# compiles FLAG...: whether a host does.
compiles() {
  "$cxx" -std=c++17 -fsyntax-only -I"$include" "$@" "$folder/host.cpp" >"$folder/said" 2>&1
}

# refused WHY FLAG...
refused() {
  why=$1
  shift
  if compiles "$@"; then
    echo "compiled with $*" >&2
    exit 1
  fi
  grep -q "error.*libruxcomp and this program $why" "$folder/said" || { cat "$folder/said"; exit 1; }
}

compiles
compiles -D_GLIBCXX_ASSERTIONS
refused 'differ in _GLIBCXX_DEBUG' -D_GLIBCXX_DEBUG
refused 'differ in _GLIBCXX_DEBUG' -DRUXCOMP_WITH_GLIBCXX_DEBUG
compiles -D_GLIBCXX_DEBUG -DRUXCOMP_WITH_GLIBCXX_DEBUG
refused 'differ in _GLIBCXX_USE_CXX11_ABI' -D_GLIBCXX_USE_CXX11_ABI=0
refused 'differ in _GLIBCXX_USE_CXX11_ABI' -DRUXCOMP_WITH_OLD_STRINGS
compiles -D_GLIBCXX_USE_CXX11_ABI=0 -DRUXCOMP_WITH_OLD_STRINGS
# That library need not be installed: this is the macro that it is known by.
refused 'use different C++ libraries' -D_LIBCPP_VERSION=1
refused 'use different C++ libraries' -DRUXCOMP_WITH_LIBCXX
compiles -D_LIBCPP_VERSION=1 -DRUXCOMP_WITH_LIBCXX
