#!/bin/sh
# Builds the wheel of the Python package, installs it into an environment of its own, and reads a
# compiled file there.
#
#   wheel.sh SOURCE VERSION RUX
set -eu
source=$1
version=$2
rux=$3

/usr/bin/python3 -c '
import importlib.util, sys
needed = ("pip", "setuptools", "venv", "wheel")
sys.exit(None in map(importlib.util.find_spec, needed))' || {
  echo 'skipped: python3-pip, python3-setuptools, python3-venv or python3-wheel is not installed'
  exit
}

work=$(mktemp -d)
trap 'rm -r "$work"' EXIT
"$source/scripts/wheel" "$work"
wheel=$work/ruxmeta-$version-py3-none-any.whl

# All modules, the mark of typed packages, and what is known of the package.
{
  (cd "$source/python" && ls ruxmeta/*.py ruxmeta/py.typed)
  for file in LICENSE METADATA RECORD WHEEL top_level.txt; do echo "ruxmeta-$version.dist-info/$file"; done
} | LC_ALL=C sort >"$work/expected"
/usr/bin/python3 -m zipfile --list "$wheel" | sed '1d; s/ .*//' | LC_ALL=C sort | diff "$work/expected" -

mkdir "$work/again"
"$source/scripts/wheel" "$work/again"
cmp "$wheel" "$work/again/ruxmeta-$version-py3-none-any.whl"

"$rux" compile "$source/examples/first/first.rux" -o "$work/first.meta" 2>/dev/null
/usr/bin/python3 -m venv --without-pip "$work/venv"
/usr/bin/python3 -m pip --quiet --disable-pip-version-check --python "$work/venv/bin/python" install \
  --no-index "$wheel"
found=$("$work/venv/bin/python" -I -c '
import sys, ruxmeta
print(ruxmeta.__file__.startswith(sys.prefix), len(ruxmeta.open(sys.argv[1]).sensors))
' "$work/first.meta")
test "$found" = 'True 1' || { echo "the installed package prints $found"; exit 1; }
