#!/bin/sh
# Tells whether a definition of highlighting has the lists of this build.
#
#   keywords.sh EDITORS FILE BUILD
set -eu
sh "$1/keywords.sh" "$1/$2" "$3" | diff "$1/$2" - || {
  echo "packaging/editors/keywords.sh --update packaging/editors/$2 $3 writes the new lists"
  exit 1
}
