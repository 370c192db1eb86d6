#!/bin/sh
# The peers can only be compared with when they take what is generated for them: has them compile
# small machines.
#
#   peers_test.sh GENERATOR SCHEMA
set -eu
generator=$1
schema=$2
for peer in dtc flatc; do
  command -v $peer >/dev/null || { echo "there is no $peer to compare with"; exit 77; }
done
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

"$generator" contents >contents
while read -r content _; do
  for sensors in 1 20 21 300; do
    for language in dts json names; do
      "$generator" "$content" $language $sensors machine.$language
    done
    dtc -q -o machine.dtb machine.dts
    flatc -b "$schema" machine.json

    # The last sensor is in the tree, all are in the buffer, which flatc writes as JSON again.
    tail -n 1 machine.names | tr '\t' '\n' >last
    { read -r id && read -r _ && read -r path; } <last
    [ "$(fdtget machine.dtb "$path" id)" = "$id" ] || { echo "$content: $path is missing"; exit 1; }
    flatc --json --raw-binary --strict-json --defaults-json "$schema" -- machine.bin
    known=$(grep -c '"sensor": ' machine.json)
    [ "$known" -eq $sensors ] || { echo "$content: flatc knows $known sensors"; exit 1; }
    rm -f machine.* tables.dtsi
  done
done <contents
