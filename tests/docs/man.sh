#!/bin/sh
# Reports what is wrong with the manual pages: their form, options that a command has and its page does
# not describe or the other way round, keywords and functions that are missing (functions also in
# docs/hosts.md), pages that are missing.
#
#   man.sh SOURCE BUILD
set -eu
sources=$1/docs/man
pages=$2/docs/man
PATH=$2/bin:$2/docs/tables:$PATH
failed=0

complain() {
  echo "$*"
  failed=1
}

# Complains about words of $1 that are not in $2.
expect_all() {
  for word in $1; do
    case " $2 " in
      *" $word "*) ;;
      *) complain "$3 $word" ;;
    esac
  done
}

# The options in what a command prints as its help, and in its page, in one line.
helped_options() {
  sed -n '/^Options:/,/^$/s/^  \(-.*\)/\1/p' | sed 's/  .*//' | grep -o -e '--*[a-zA-Z][a-zA-Z-]*' | tr '\n' ' '
}
written_options() {
  sed -n '/^# OPTIONS/,/^# EX/s/^\*-/&/p' "$1" | grep -o '\*--*[a-zA-Z][a-zA-Z-]*\*' | tr -d '*' | tr '\n' ' '
}
check_options() {
  page=$sources/$1.scd
  if [ ! -e "$page" ]; then
    complain "docs/man/$1.scd is missing"
    return
  fi
  helped=$(shift; "$@" --help | helped_options)
  written=$(written_options "$page")
  expect_all "$helped" "$written" "docs/man/$1.scd does not describe"
  expect_all "$written" "$helped" "docs/man/$1.scd describes an option that does not exist:"
}

check_options rux.1 rux
commands=$(rux --help | sed -n '/^Commands:/,/^$/s/^  \([a-z][a-z-]*\) .*/\1/p')
for command in $commands; do
  check_options "rux-$command.1" rux "$command"
  grep -q "^\*rux-$command\*(1)$" "$sources/rux.1.scd" ||
    complain "docs/man/rux.1.scd does not describe $command"
done

for page in "$pages"/*.[135]; do
  mandoc -T lint -W style "$page" || failed=1
  warnings=$(groff -ww -man -Tutf8 "$page" 2>&1 >/dev/null)
  [ -z "$warnings" ] || complain "$page: $warnings"
done

# Other pages that a page names.
for source in "$sources"/*.scd; do
  for name in $(grep -o '\*[a-z-]*\*([135])' "$source" | tr -d '*' | tr '()' '. ' | sort -u); do
    [ -e "$sources/$name.scd" ] || complain "$source names $name, which does not exist"
  done
done

# The language: keys of each kind of section, types of values, operators.
script=$(tr -d '\\' <"$sources/rux-script.5.scd")
part() { printf '%s\n' "$script" | sed -n "/^\*$1\*\$/,/^\$/p" | tr -s '[], .;\t\n' ' '; }
for kind in $(language_tables sections | cut -f 1); do
  expect_all "$(language_tables keys | awk -v kind="$kind" '$1 == kind && $2 == "key" { print $3 }')" \
    "$(part "\[$kind\]")" \
    "docs/man/rux-script.5.scd, [$kind], does not describe"
  printf '%s\n' "$script" | grep -q "^\*\[$kind\]\*\$" ||
    complain "docs/man/rux-script.5.scd does not describe [$kind]"
  grep -q "^### $kind\$" "$1/docs/script.md" || complain "docs/script.md does not describe [$kind]"
done
rows="$1/tests/docs/rows.awk"
language_tables value-types | awk -v what='value types' -f "$rows" | while IFS='|' read -r _ code parts _; do
  code=$(echo $code)
  parts=$(echo $parts | sed 's/^-$/nothing/')
  [ "$(printf '%s\n' "$script" | grep -A1 "^\*$code\*\$" | tail -n 1)" = "$(printf '\t%s' "$parts")" ] ||
    echo "docs/man/rux-script.5.scd: type $code is $parts"
done | grep . && failed=1
set -f
operators=$(printf '%s\n' "$script" | sed -n '/^# OPERATORS/,/^# SEE/p' | tr -s ':.\n' ' ')
expect_all "$(language_tables operators | cut -f 1)" "$operators" \
  'docs/man/rux-script.5.scd does not describe the operator'
set +f

# The library's functions, codes, classes of words and identifiers.
functions=$(nm -D --defined-only "$2/lib/libruxcomp.so" | sed -n 's/.* T \(g[cd][A-Za-z]*\)$/\1/p')
expect_all "$functions" "$(tr -cs 'A-Za-z' ' ' <"$sources/libruxcomp.3.scd")" \
  'docs/man/libruxcomp.3.scd does not describe'
expect_all "$functions" "$(sed -n 's/^| `\(g[cd][A-Za-z]*\)(.*/\1/p' "$1/docs/hosts.md" | tr '\n' ' ')" \
  'the tables of docs/hosts.md do not describe'
expect_all "$(language_tables last-errors | awk '{ print $1 ":" $2 }')" \
  "$(sed 's/\([0-9]\)  *\([A-Z]\)/\1:\2/g' "$sources/libruxcomp.3.scd" | tr -s ' \n' ' ')" \
  'docs/man/libruxcomp.3.scd does not describe the code'
identifiers=$(language_tables sections | awk '$3 != "-" { print $3 ":" $1 }'
  language_tables entries | awk '$4 != "-" { print $4 ":" $2 }')
expect_all "$identifiers" \
  "$(sed 's/\(0x[0-9A-F]*\)  */\1:/g' "$sources/rux-meta.5.scd" | tr -s ' \n' ' ')" \
  'docs/man/rux-meta.5.scd does not describe the identifier'
expect_all "$(language_tables symbol-tables | cut -f 1)" \
  "$(tr -s ' \n' ' ' <"$sources/rux-meta.5.scd")" 'docs/man/rux-meta.5.scd does not describe the class'

exit $failed
