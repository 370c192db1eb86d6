#!/bin/sh
# Tells whether the symbols file of the package libruxcomp0 has what the library exports, and whether
# the packages have the project's version.
#
#   symbols.sh SOURCE VERSION
set -eu
cd "$1"
version=$2

work=$(mktemp -d)
trap 'rm -r "$work"' EXIT
# Between "global:" and "local:", a symbol and a semicolon a line.
sed -n '/^  global:$/,/^  local:$/s/^ *\([A-Za-z_][A-Za-z0-9_]*\);$/\1/p' include/libruxcomp.map |
  LC_ALL=C sort >"$work/map"
sed -n 's/^ \(.*\)@Base [0-9.]*$/\1/p' packaging/debian/libruxcomp0.symbols >"$work/symbols"
test -s "$work/map"
diff "$work/map" "$work/symbols" || {
  echo "include/libruxcomp.map (<) and packaging/debian/libruxcomp0.symbols (>) differ"
  exit 1
}

# Packages made before or after a release have ~ or + and more after it.
packaged=$(sed -n '1s/^ruxcomp (\([0-9.]*\).*/\1/p' packaging/debian/changelog)
test "$packaged" = "$version" || {
  echo "packaging/debian/changelog is of version $packaged, the project of $version"
  exit 1
}
