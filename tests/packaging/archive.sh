#!/bin/sh
# Tells whether the archive gives a host's linker no name that the host may have for something of its
# own: all are in ruxcomp, of the C++ library, or those that the library exports with their records.
#
#   archive.sh SOURCE NM ARCHIVE
set -eu
source=$1
nm=$2
archive=$3

work=$(mktemp -d)
trap 'rm -r "$work"' EXIT
sed -n 's/^ *\([A-Za-z_][A-Za-z0-9_]*\);$/\1/p' "$source/include/libruxcomp.map" >"$work/exported"

# As they are linked: shown in C++, the name of a function may come after its type.
"$nm" -g --defined-only "$archive" 2>"$work/said" | sed -n 's/^[0-9a-f]* [A-Za-z] //p' |
  LC_ALL=C sort -u >"$work/names"
grep -qx gccParse "$work/names" || { cat "$work/said"; echo "$archive has no gccParse"; exit 1; }

# Tables of classes, guards and objects in functions; then the namespace. The compiler itself adds
# what it takes to raise errors, and the placement new of the C++ library is in no namespace.
of='(DW\.ref\.)?_Z(T[VTIS]|GV|GR|Z)*N?[VKRO]*'
if grep -Ev "^$of(7ruxcomp|S[a-t]|9__gnu_cxx|[0-9]+tag[A-Z]+[CD])" "$work/names" |
  grep -Evx 'DW\.ref\.__gxx_personality_v0|__clang_call_terminate|_Z(nw|na)[mj]Pv|_Z(dl|da)PvS_' |
  grep -Fvx -f "$work/exported" >"$work/others"
then
  echo "$archive defines outside of ruxcomp what $source/include/libruxcomp.map does not have:"
  c++filt <"$work/others"
  exit 1
fi
