#!/bin/sh
# What is done for ten times as many things of one kind must not cost more than eleven times as much:
# counts the instructions that compiling, and what verifies the result, take, and those of comparing
# with a list, of importing and of exporting. Times come and go, instructions do not.
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

# expect_growth NAME SMALL LARGE: reports how much more the second one costs.
expect_growth() {
  awk -v name="$1" -v small="$2" -v large="$3" -v start="$start" 'BEGIN {
    growth = (large - start) / (small - start)
    printf "%-20s %6.2f\n", name, growth
    exit growth > 11
  }' || status=1
}

# own_properties COUNT FOLDER: a machine whose sensors have a property of their own each, and a list
# with a column for each of these.
own_properties() {
  awk -v count="$1" 'BEGIN {
    print "[MORVRUX]\nVERSION = 1.0\n[DEFINE]\nVT_CONST = 1\n[SYSTEM]\nTYPE = 2\nMODEL = \"A\"\nFLAG = 0\nRUXLOOP = 1000"
    print "[GROUP]\nPARENT = 0\nNAME = BOARD\nCHILDGROUP = 0"
    printf "[PELMGROUP]\nNAME = ALL\nID = 1\nPID = 1\nSENSORS = 1"
    for (i = 2; i <= count; ++i) printf ", %d", i
    for (i = 1; i <= count; ++i) {
      printf "\n[SENSOR]\nPARENT = BOARD\nNAME = S%d\nID = %d\nTYPE = 1\n", i, i
      printf "INITFLAG = 0\nCONTROLMASK = 0\nP_OWN%d = x\nVALUE = VT_CONST, 0\n", i
    }
  }' >"$2/main.rux"
  "$rux" compile "$2/main.rux" -o "$2/main.meta" 2>"$2/log" || { cat "$2/log"; exit 1; }
  awk -v count="$1" 'BEGIN {
    printf "NAME"
    for (i = 1; i <= count; ++i) printf ",P_OWN%d", i
    for (i = 1; i <= count; ++i) printf "\nS%d", i
  }' >"$2/list.csv"
}

# shared_parts COUNT FOLDER: a machine of that many parts, each with a sensor and a file of words that
# all of them include.
shared_parts() {
  awk -v count="$1" -v folder="$2" 'BEGIN {
    main = folder "/main.rux"
    print "[MORVRUX]\nVERSION = 1.0\n[DEFINE]\nVT_CONST = 1\n[SYSTEM]\nTYPE = 2\nMODEL = \"A\"\nFLAG = 0\nRUXLOOP = 1000" >main
    print "[GROUP]\nPARENT = 0\nNAME = BOARD\nCHILDGROUP = 0" >main
    print "[DEFINE]\nUNUSED = 1" >(folder "/words.rux")
    printf "[PELMGROUP]\nNAME = ALL\nID = 1\nPID = 0\nSENSORS = 1" >main
    for (i = 2; i <= count; ++i) printf ", %d", i >main
    print "" >main
    for (i = 1; i <= count; ++i) {
      part = folder "/part" i ".rux"
      printf "[INCLUDE]\nFILE = part%d.rux\n", i >main
      printf "[INCLUDE]\nFILE = words.rux\n[DEFINE]\nUNUSED%d = 1\n[SENSOR]\nPARENT = BOARD\n", i >part
      printf "NAME = S%d\nID = %d\nTYPE = 1\nINITFLAG = 0\nCONTROLMASK = 0\nVALUE = VT_CONST, 0\n", i, i >part
      close(part)
    }
  }'
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
  expect_growth "$shape" "$small" "$large"
done <list

for size in 200 2000; do
  mkdir "table$size"
  own_properties $size "table$size"
done
for format in c json prometheus; do
  small=$(count export $format table200/main.meta -o exported)
  large=$(count export $format table2000/main.meta -o exported)
  expect_growth "export-$format" "$small" "$large"
done
small=$(count table table200/main.meta --check table200/list.csv)
large=$(count table table2000/main.meta --check table2000/list.csv)
expect_growth own-properties "$small" "$large"

for size in 20 200; do
  mkdir "parts$size"
  shared_parts $size "parts$size"
done
small=$(count check -W all parts20/main.rux)
large=$(count check -W all parts200/main.rux)
expect_growth shared-parts "$small" "$large"

for size in 100 1000; do
  awk -v count="$size" 'BEGIN {
    for (i = 0; i < count; ++i) printf "chip \"c%d-*\"\nlabel in0 \"V%d\"\nset in0_max 3.3 * 1.05\n", i, i
  }' >"sensors$size.conf"
done
small=$(count import lm-sensors sensors100.conf -o imported100)
large=$(count import lm-sensors sensors1000.conf -o imported1000)
expect_growth imported "$small" "$large"
exit $status
