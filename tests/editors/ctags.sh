#!/bin/sh
# Compares the tags of a script's files with the names that rux finds in its compiled files.
#
#   ctags.sh SOURCE BUILD
set -eu
definition=$1/packaging/editors/ctags/rux.ctags
examples=$1/examples/server
sample=$1/tests/editors/tags.rux
work=$2/tests/editors/ctags
PATH=$2/bin:$PATH
rm -rf "$work"
mkdir -p "$work"
cd "$work"

# The names of one kind, without the quotes of rux.
tags() { awk -F '\t' -v kind="$2" '!/^!/ && $4 == kind { print $1 }' "$1" | sort; }
names() { rux complete "$@/" | sed '1d; s|^[^/]*/||; s/\t.*//; s/^"\(.*\)"$/\1/' | sort; }

compare() {
  script=$1
  rux compile "$script" -o script.meta -g script.metad 2>/dev/null
  ctags --options="$definition" --languages=Rux -f tags $2
  for kind in $(rux complete ls script.meta '' | sed '1d; s/\t.*//'); do
    # MORVRUX and SYSTEM sections have no names, and so no tags.
    case $kind in MORVRUX | SYSTEM) continue ;; esac
    letter=$(ctags --options="$definition" --list-kinds-full=Rux |
      awk -v kind="$(echo "$kind" | tr A-Z a-z)" '$2 == kind { print $1 }')
    names get script.meta "$kind" >wanted
    tags tags "$letter" | diff wanted - || { echo "$script: the tags of $kind differ"; exit 1; }
  done
  names where script.metad WORD >wanted
  tags tags w | diff wanted - || { echo "$script: the tags of defined words differ"; exit 1; }
}
compare "$examples/server.rux" "-R $examples"
compare "$sample" "$sample"
