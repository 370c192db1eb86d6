# usage: process_state.sh SOURCE LIBRARY: every object of the library's core that can change is listed
# in query/process_state.h, by the name that it has inside of ruxcomp::core.
set -eu
header=$1/query/process_state.h
missing=$(nm -C --defined-only "$2" 2>/dev/null |
  sed -n 's/^[0-9a-f]* [bBdDu] //p' |
  # Constants that hold pointers, and what compilers add to objects in functions.
  grep -Ev '(^|::)k[A-Z]|^_ZGR|^guard variable|^vtable|^typeinfo|::none$|__table$|^g_(NTMap|tbl|idx)' |
  sed 's/\[abi:cxx11\]//; s/^ruxcomp::\(core::\)*//; s/(anonymous namespace):://
       s/(.*//; s/<.*>::/<...>::/' | sort -u |
  while read -r object; do
    grep -qF "$object" "$header" || echo "$object"
  done)
[ -z "$missing" ] || { echo "not in query/process_state.h:" $missing; exit 1; }
