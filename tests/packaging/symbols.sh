#!/bin/sh
# Compares the symbols files of the packages with what the libraries export, and the version of the
# packages with that of the project.
#
#   symbols.sh SOURCE VERSION
set -eu
cd "$1"
version=$2

work=$(mktemp -d)
trap 'rm -r "$work"' EXIT
# compare MAP PACKAGE: between "global:" and "local:", a symbol and a semicolon a line.
compare() {
  sed -n '/^  global:$/,/^  local:$/s/^ *\([A-Za-z_][A-Za-z0-9_]*\);$/\1/p' "$1" |
    LC_ALL=C sort >"$work/map"
  sed -n 's/^ \(.*\)@Base [0-9.]*$/\1/p' "packaging/debian/$2.symbols" >"$work/symbols"
  test -s "$work/map"
  diff "$work/map" "$work/symbols" || {
    echo "$1 (<) and packaging/debian/$2.symbols (>) differ"
    exit 1
  }
}
compare include/libruxcomp.map libruxcomp0
compare c_interface/libruxmeta.map libruxmeta0

# Packages made before or after a release have ~ or + and more after it.
packaged=$(sed -n '1s/^ruxcomp (\([0-9.]*\).*/\1/p' packaging/debian/changelog)
test "$packaged" = "$version" || {
  echo "packaging/debian/changelog is of version $packaged, the project of $version"
  exit 1
}
grep -q "^version = \"$version\"$" python/pyproject.toml || {
  echo "python/pyproject.toml is not of version $version"
  exit 1
}
