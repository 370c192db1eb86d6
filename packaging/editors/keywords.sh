#!/bin/sh
# Prints a definition of highlighting with the lists of section kinds, keys and operators of this build
# in it; with --update, writes it.
#
#   keywords.sh [--update] FILE BUILD
#
# FILE is vim/syntax/rux.vim or vscode/syntaxes/rux.tmLanguage.json. What stands between the lines
# with "generated: LIST" and "end of what is generated" is replaced by what generate/*.awk make of the
# lists. Those come from the program `tables` of the tests, which prints them for the manual as well.
set -eu

update=
if [ "$1" = --update ]; then
  update=yes
  shift
fi
file=$1
PATH=$2/tests/docs/bin:$PATH
generate=$(dirname "$0")/generate

case $file in
  *.vim) form=vim ;;
  *.tmLanguage.json) form=textmate ;;
esac

# The rows that generate/lists.awk reads.
list_keys() {
  for kind in $(tables sections | sed 's/^| `\[\(.*\)\]`.*/\1/'); do
    tables "keys of $kind" | sed -n "
      s/^| \`\([^\`]*\)\` | [a-z]* | \([a-z]*\) .*/$kind key \1 \2/p
      s/^| \`\([^\`]*\)\`\.\.\. | [a-z]* | \([a-z]*\) .*/$kind prefix \1 \2/p
      s/^| any[a-z ]* | [a-z]* | \([a-z]*\) .*/$kind any - \1/p"
  done
  # The kinds that read their items by code of their own.
  echo 'DEFINE any - number'
  echo 'IFDEF any - number'
  echo 'INCLUDE key FILE text'
}
list_operators() { tables operators | sed 's/^| `\([^`]*\)`.*/operator \1/; s/ \\/ /'; }

generated() {
  { list_keys; list_operators; } |
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
