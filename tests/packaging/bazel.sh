#!/bin/sh
# Builds machines with the rules for Bazel, in its sandbox.
#
#   bazel.sh SOURCE RUX SCRATCH
set -eu
source=$1
rux=$2
scratch=$3

# What Bazel makes is write-protected.
clean() {
  [ ! -d "$scratch" ] || chmod -R u+w "$scratch"
  rm -rf "$scratch"
}
clean
mkdir -p "$scratch/tree/boards/alpha" "$scratch/tree/boards/beta" "$scratch/tree/std"
trap clean EXIT
cd "$scratch/tree"

cat >WORKSPACE <<END
local_repository(name = "rules_rux", path = "$source/packaging/bazel")
load("@rules_rux//:defs.bzl", "local_rux")
local_rux(name = "rux", path = "$rux")
END
echo 'filegroup(name = "scripts", srcs = glob(["*.rux"]), visibility = ["//visibility:public"])' \
  >std/BUILD.bazel
printf '[DEVICE]\nNAME = PSU\nID = 8\nINITFLAG = 0\nCONTROLMASK = 0\n' >std/psu.rux
cat >boards/BUILD.bazel <<'END'
load("@rules_rux//:defs.bzl", "rux_meta")
[rux_meta(
    name = script[:-len("/main.rux")],
    script = script,
    includes = ["//std:scripts"],
    debug_meta = True,
    options = ["-Werror"],
    time = 1700000000,
) for script in glob(["*/main.rux"])]
rux_meta(name = "undeclared", script = "alpha/main.rux")
END
for machine in alpha beta; do
  printf '[MORVRUX]\nVERSION = 1\n[INCLUDE]\nFILE = ..\\..\\std\\psu.rux\n' >boards/$machine/main.rux
done
echo 'HIDDEN = 1' >>boards/beta/main.rux

fail() {
  echo "$@"
  cat "$scratch/log"
  exit 1
}
# Builds below another output root each, as on machines that share nothing but the cache.
build() {
  root=$1
  shift
  bazel --batch --nohome_rc --output_user_root="$scratch/$root" build \
    --spawn_strategy=sandboxed --disk_cache="$scratch/cache" "$@" >"$scratch/log" 2>&1
}
# How many scripts the last build compiled, rather than took from a cache.
compiled() { sed -n 's/^INFO: .*processes*:.* \([0-9]*\) [a-z]*-sandbox.*/\1/p' "$scratch/log"; }

build one //boards:alpha || fail 'the first build fails'
[ "$(compiled)" = 1 ] || fail 'the first build compiles another number of scripts than 1'
SOURCE_DATE_EPOCH=1700000000 "$rux" compile boards/alpha/main.rux -o "$scratch/alpha.meta" \
  -g "$scratch/alpha.metad" 2>/dev/null
for file in alpha.meta alpha.metad; do
  cmp bazel-bin/boards/$file "$scratch/$file" || fail "$file is another one outside the sandbox"
done

build one //boards:alpha && [ -z "$(compiled)" ] || fail 'without a change, a script is compiled'
build two //boards:alpha && [ -z "$(compiled)" ] || fail 'the cache is not used'
sed -i 's/PSU/PSU0/' std/psu.rux
build one //boards:alpha && [ "$(compiled)" = 1 ] || fail 'a change of an included file is missed'
"$rux" ls bazel-bin/boards/alpha.meta DEVICE | grep -q 'PSU0$' || fail 'alpha.meta is an old one'

! build one //boards:undeclared || fail 'a file that is not declared is found'
grep -q 'cannot include .*psu.rux.*missing-include' "$scratch/log" ||
  fail 'another reason than the file that is not declared'
! build one //boards:beta || fail 'the option of a machine is lost'
grep -q 'HIDDEN' "$scratch/log" || fail 'another reason than the unknown key'
