#!/bin/sh
# Generated models are worth measuring only when nothing is wrong with them: compiles small ones.
#
#   models_test.sh GENERATOR RUX
set -eu
generator=$1
rux=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

# expect ENDING SCRIPT: rux compile ends its report with that, a basic regular expression, and what
# it makes is sound.
expect() {
  rm -f meta metad
  "$rux" compile "$2" -o meta -g metad >report 2>&1 || true
  tail -n 1 report | grep -qx "$2: $1" || { cat report; exit 1; }
  [ ! -e meta ] || "$rux" verify -q meta metad
}

for rich in '' --rich; do
  for sensors in 1 20 21 300; do
    # shellcheck disable=SC2086 # nothing, or one word
    "$generator" $rich rux $sensors machine.rux
    expect '0 errors, 0 warnings' machine.rux
  done
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
