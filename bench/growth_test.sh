#!/bin/sh
# What is done for ten times as many things of one kind must not cost more than eleven times as much:
# counts the instructions that compiling, and what verifies the result, take. Times come and go,
# instructions do not.
#
#   growth_test.sh GENERATOR RUX
set -eu
generator=$1
rux=$2
[ -x /usr/bin/valgrind ] || { echo 'there is no valgrind to count with'; exit 77; }
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

# count ARGUMENT...: the instructions of a run of rux.
count() {
  /usr/bin/valgrind --tool=callgrind --callgrind-out-file=counts "$rux" "$@" >log 2>&1 || true
  sed -n 's/.* Collected : *\([0-9]*\).*/\1/p' log
}

start=$(count --version)
status=0
"$generator" shapes >list
while read -r shape _ full _; do
  for part in 400 40; do
    mkdir "$shape$part"
    "$generator" "$shape" $((full / part)) "$shape$part"
  done
  small=$(count compile "${shape}400/main.rux")
  large=$(count compile "${shape}40/main.rux")
  awk -v shape="$shape" -v small="$small" -v large="$large" -v start="$start" 'BEGIN {
    growth = (large - start) / (small - start)
    printf "%-20s %6.2f\n", shape, growth
    exit growth > 11
  }' || status=1
done <list
exit $status
