#!/bin/sh
# usage: no_proc.sh RUX FOLDER
#
# Compiles and decompiles in FOLDER where nothing is mounted on /proc. Prints what is wrong; exits
# with 77 when it cannot be taken away.
rux=$1
cd "$2" || exit 1
if [ -z "$inside" ]; then
  # The right to mount: in a name space of its own, as whoever is root there.
  unshare --map-root-user --mount true 2> /dev/null || exit 77
  inside=yes exec unshare --map-root-user --mount "$0" "$@"
fi
{ echo '[MORVRUX]'; echo 'VERSION = 1'; echo '[PROPERTY]'; seq -f 'P%g = some text' 400; } > board.rux
export SOURCE_DATE_EPOCH=1
"$rux" compile board.rux -o expected.meta -g expected.metad 2> errors || cat errors
"$rux" decompile expected.metad -o expected.rux
mount -t tmpfs tmpfs /proc || exit 77
[ -z "$(ls -A /proc)" ] || exit 77

mkdir scratch
export TMPDIR="$PWD/scratch"
echo older > board.meta
chmod 604 board.meta
"$rux" compile board.rux -g board.metad --depfile board.d 2> errors || cat errors
cmp expected.meta board.meta
cmp expected.metad board.metad
[ "$(stat -c %a board.meta)" = 604 ] || stat -c %a board.meta
"$rux" compile board.rux -o - 2> errors | cmp - expected.meta
"$rux" compile -j 2 board.rux expected.rux -o '{}.several' 2> errors || cat errors
cmp expected.meta board.several
"$rux" decompile board.metad -o again.rux && cmp expected.rux again.rux
"$rux" verify -q board.meta board.metad
[ -z "$(ls -A scratch)" ] || ls -A scratch
[ -z "$(ls -A | grep '^\.rux')" ] || ls -A

echo older > board.meta
TMPDIR="$PWD/none" "$rux" compile board.rux 2> errors && echo 'compiled without a folder for it'
grep -q '^rux: error: cannot write board.meta: TMPDIR is not a folder for temporary files$' errors ||
  cat errors
[ "$(cat board.meta)" = older ] || echo 'the older file is gone'
