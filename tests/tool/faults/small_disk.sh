#!/bin/sh
# usage: small_disk.sh RUX FOLDER
#
# Compiles onto a disk of FOLDER that has ever less room and then may not be written at all. Prints
# what is wrong; exits with 77 when no disk can be mounted.
rux=$1
cd "$2" || exit 1
if [ -z "$inside" ]; then
  # The right to mount: in a name space of its own, as whoever is root there.
  unshare --map-root-user --mount true 2> /dev/null || exit 77
  inside=yes exec unshare --map-root-user --mount "$0" "$@"
fi
mkdir disk
mount -t tmpfs -o size=64k tmpfs disk || exit 77

{ echo '[MORVRUX]'; echo 'VERSION = 1'; echo '[PROPERTY]'; seq -f 'P%g = some text' 400; } > board.rux
echo older > older
rux_compiles() { "$rux" compile board.rux -o disk/board.meta -g disk/board.metad 2> errors; }
old_is_left() { cmp older disk/board.meta && cmp older disk/board.metad; }
nothing_else_is_left() { [ "$(ls -A disk | tr '\n' ' ')" = "$1" ] || echo "left: $(ls -A disk)"; }

full=0
for room in $(seq 0 14); do
  rm -f disk/*
  cp older disk/board.meta
  cp older disk/board.metad
  head -c $(((14 - room) * 4096)) /dev/zero > disk/filler
  if rux_compiles; then
    "$rux" dump disk/board.meta > /dev/null && "$rux" dump disk/board.metad > /dev/null ||
      echo "room $room: not whole"
  else
    [ $? = 3 ] || echo "room $room: wrong exit status"
    grep -q 'rux: error: cannot write disk/board.metad\?: No space left on device' errors ||
      cat errors
    old_is_left
    full=$((full + 1))
  fi
  nothing_else_is_left 'board.meta board.metad filler '
done
# Both must have happened.
[ $full -gt 2 ] && [ $full -lt 14 ] || echo "full $full times of 15"

rm -f disk/*
cp older disk/board.meta
cp older disk/board.metad
mount -o remount,ro disk
rux_compiles && echo 'compiled onto a read-only disk'
grep -q 'rux: error: cannot write disk/board.meta: Read-only file system' errors || cat errors
old_is_left
nothing_else_is_left 'board.meta board.metad '
