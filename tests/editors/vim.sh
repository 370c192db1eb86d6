#!/bin/sh
# Lets Vim highlight scripts, and run rux check.
#
#   vim.sh SOURCE BUILD
set -eu
tests=$1/tests/editors
work=$2/tests/editors/vim
rm -rf "$work"
mkdir -p "$work"
export VIM_FILES="$1/packaging/editors/vim" SAMPLE="$tests/sample.rux" MARKS="$tests/marks.txt"
export EXAMPLES="$1/examples" OUT="$work/out" PATH="$2/bin:$PATH"
cd "$work"

# Without a terminal, a Vim that waits would wait for ever.
run() { vim -e -s -u NONE -i NONE -n -S "$tests/$1" </dev/null >screen 2>&1; }

run classes.vim || {
  echo 'vim failed'
  cat screen
  exit 1
}
grep -v '^#' "$MARKS" >wanted
diff wanted "$OUT"

printf '[SYSTEM]\nTYPE = RACK\nMODEL = M\nFLAG = 0, 1\nRUXLOOP = 1\n' >board.rux
run check.vim || {
  echo 'vim failed'
  cat screen
  exit 1
}
# Warnings and errors by line.
printf '%s\n' 'board.rux:2: e' 'board.rux:4: w' | diff - "$OUT"
