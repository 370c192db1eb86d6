#!/bin/sh
# Checks whether what a page of the manual shows is what happens; with --update, makes it so.
#
#   page.sh [--update] PAGE SOURCE BUILD
#
# PAGE is a path in SOURCE, the root of the tree; BUILD is where it was built. Commands run in a folder
# of the page's own that looks like the root of a built tree, and as if the build were installed.
set -eu

update=
if [ "$1" = --update ]; then
  update=yes
  shift
fi
page=$1
source=$(cd "$2" && pwd)
build=$(cd "$3" && pwd)

work=$build/tests/docs/$(echo "$page" | tr / -)
rm -rf "$work"
mkdir -p "$work"
cd "$work"
ln -s "$source"/* .
ln -sfn "$build" build

# A page with a CMake project finds the package.
if grep -q '^```cmake save=' "$source/$page"; then
  DESTDIR=$work/root cmake --install "$build" --prefix /usr >/dev/null
  export CMAKE_PREFIX_PATH="$work/root/usr"
fi

export LC_ALL=C COLUMNS=
export PATH="$build/bin:$build/docs/tables:$build/tests/docs/bin:$PATH"
export PYTHONPATH="$source/python" PYTHONDONTWRITEBYTECODE=1
export CPATH="$source/include" LIBRARY_PATH="$build/lib" LD_LIBRARY_PATH="$build/lib"
export GOCACHE="$build/go-cache" GO111MODULE=off
export LD_PRELOAD="$build/tests/docs/bin/plugin_here.so"
awk -f "$source/tests/docs/page.awk" "$source/$page" >page.md
unset LD_PRELOAD

diff -u "$source/$page" page.md && exit 0
[ -n "$update" ] || {
  echo "- is what $page says, + is what happens; page.sh --update takes over what may be taken over"
  exit 1
}
grep -v '^!! ' page.md >"$source/$page"
