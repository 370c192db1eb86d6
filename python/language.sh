#!/bin/sh
# Compares the language module of the Python package with the lists of this build; with --update,
# writes it.
#
#   language.sh [--update] BUILD
set -eu

update=
if [ "$1" = --update ]; then
  update=yes
  shift
fi
module=$(dirname "$0")/ruxmeta/_language.py

if [ -n "$update" ]; then
  "$1/docs/tables/language_tables" python >"$module"
else
  "$1/docs/tables/language_tables" python | diff "$module" - || {
    echo "python/language.sh --update $1 writes the new lists"
    exit 1
  }
fi
