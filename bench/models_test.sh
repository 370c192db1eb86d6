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

# expect ENDING SCRIPT OPTION...: rux compile ends its report with that.
expect() {
  ending=$1
  script=$2
  shift 2
  "$rux" compile --werror "$@" "$script" -o meta -g metad >report 2>&1 || true
  tail -n 1 report | grep -qxF "$script: $ending" || { cat report; exit 1; }
}

for rich in '' --rich; do
  for sensors in 1 20 21 300; do
    # shellcheck disable=SC2086 # nothing, or one word
    "$generator" $rich rux $sensors machine.rux
    expect '0 errors, 0 warnings' machine.rux
    "$rux" verify -q meta metad
  done
done

count=100
"$generator" shapes >list
while read -r shape accepted _; do
  mkdir "$shape"
  "$generator" "$shape" $count "$shape"
  if [ "$accepted" = accepted ]; then
    # Much of the same is the point of a shape.
    expect '0 errors, 0 warnings' "$shape/main.rux" \
      -W no-childgroup-mismatch -W no-overwritten-row -W no-repeated-sensor
    "$rux" verify -q meta metad
  else
    expect "$count errors, 0 warnings" "$shape/main.rux"
  fi
done <list
