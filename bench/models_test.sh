#!/bin/sh
# Generated models are worth measuring only when nothing is wrong with them, and when they are what
# README.md says of them: compiles small ones.
#
#   models_test.sh GENERATOR RUX
set -eu
generator=$1
rux=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

fail() {
  echo "$1" >&2
  exit 1
}

# expect ENDING SCRIPT [OPTION...]: rux compile ends its report with that, a basic regular
# expression, and what it makes is sound.
expect() {
  ending=$1
  script=$2
  shift 2
  rm -f meta metad
  "$rux" compile "$@" "$script" -o meta -g metad >report 2>&1 || true
  tail -n 1 report | grep -qx "$script: $ending" || { cat report; exit 1; }
  [ ! -e meta ] || "$rux" verify -q meta metad
}

# comments FILE...: how many lines have one, which begins with # or //.
comments() {
  cat "$@" | grep -cE '(^|[ {])(#|//) ' || true
}

# same_comments FOLDER: what people read is the same for everybody. Words have comments,
# too, which only scripts have.
same_comments() {
  echo "rux $(comments "$1"/[mt]*.rux), dtc $(comments "$1"/*.dts*), flatc $(comments "$1"/*.json)" >said
  grep -qE '^rux ([0-9]+), dtc \1, flatc \1$' said || fail "$1 has comments: $(cat said)"
}

# generate CONTENT SENSORS: a folder of that name.
generate() {
  mkdir "$1$2"
  for language in rux dts json; do
    "$generator" "$1" $language "$2" "$1$2/machine.$language"
  done
}

"$generator" contents >contents
while read -r content options; do
  for sensors in 1 20 21 300; do
    generate "$content" $sensors
    # shellcheck disable=SC2086 # a list of options
    expect '0 errors, 0 warnings\( ([0-9]* suppressed)\)\{0,1\}' "$content$sensors/machine.rux" $options
    same_comments "$content$sensors"
  done
done <contents

# The figures of rich and real machines.
generate rich 10000
script=rich10000/machine.rux
bytes=$(wc -c <$script)
[ $((bytes / 100000)) -eq 36 ] || fail "a rich script has $bytes bytes"
expect '0 errors, 2100 warnings' $script -W negative-number
names=$(grep -A 1 '^\[SENSOR\]$' $script | grep -cE '^NAME = .{8,20}$')
[ "$names" -eq 10000 ] || fail "$names names have 8 to 20 characters"
limits=$(grep '^THRESHOLD_' $script | sed 's/.*= //' | sort -u | wc -l)
all_limits=$(grep -c '^THRESHOLD_' $script)
[ $((limits * 20)) -gt $((all_limits * 19)) ] || fail "$limits limits of $all_limits differ"
[ "$(comments $script)" -eq 10000 ] || fail 'a sensor has no comment'

for line in '[GROUP]' '[PELMGROUP]' '[PROPERTY]' '[DEVICE]' 'FILE = words.rux' 'FILE = tables.rux'; do
  grep -qxF "$line" real300/machine.rux || fail "a real machine has no $line"
done

count=100
"$generator" shapes >list
while read -r shape verdict _; do
  mkdir "$shape"
  "$generator" "$shape" $count "$shape"
  case $verdict in
    clean) expect '0 errors, 0 warnings' "$shape/main.rux" ;;
    warned) expect '0 errors, [1-9][0-9]* warnings*' "$shape/main.rux" ;;
    refused) expect "$count errors, 0 warnings" "$shape/main.rux" ;;
  esac
done <list
