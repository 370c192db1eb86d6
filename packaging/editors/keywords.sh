#!/bin/sh
# Prints a definition of highlighting with the lists of section kinds, keys and operators of this build
# in it; with --update, writes it.
#
#   keywords.sh [--update] FILE BUILD
#
# FILE is vim/syntax/rux.vim or vscode/syntaxes/rux.tmLanguage.json. What is between the lines
# with "generated: LIST" and "end of what is generated" is replaced by what generate/*.awk make of the
# lists. Those come from the program language_tables, which prints them for the manual as well.
set -eu

update=
if [ "$1" = --update ]; then
  update=yes
  shift
fi
file=$1
PATH=$2/docs/tables:$PATH
generate=$(dirname "$0")/generate

case $file in
  *.vim) form=vim ;;
  *.tmLanguage.json) form=textmate ;;
esac

generated() {
  { language_tables keys; language_tables operators; } |
    awk -v list="$1" -f "$generate/lists.awk" -f "$generate/$form.awk"
}

regenerated() {
  while IFS= read -r line; do
    case $line in
      *'end of what is generated'*) skips= ;;
    esac
    [ -n "${skips-}" ] || printf '%s\n' "$line"
    case $line in
      *'generated: '*)
        list=${line##*generated: }
        generated "${list%%[!a-z]*}"
        skips=yes
        ;;
    esac
  done <"$file"
}

if [ -z "$update" ]; then
  regenerated
else
  text=$(regenerated)
  printf '%s\n' "$text" >"$file"
fi
