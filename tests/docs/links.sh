#!/bin/sh
# Tells which links of the Markdown files of the tree lead nowhere, and which pages of docs/ its index
# does not lead to.
#
#   links.sh SOURCE
set -eu
cd "$1"

pages=$(find . -name '*.md' -not -path './build*' -not -path './.git/*' | sed 's|^\./||' | sort)
# shellcheck disable=SC2086 # a list of names without blanks
awk '
  # How links call a heading.
  function anchor_of(heading) {
    sub(/^#+ */, "", heading)
    # Of a link, its text.
    while (match(heading, /\]\([^)]*\)/))
      heading = substr(heading, 1, RSTART - 1) substr(heading, RSTART + RLENGTH)
    heading = tolower(heading)
    gsub(/[^a-z0-9 _-]/, "", heading)
    gsub(/ /, "-", heading)
    return heading
  }
  function folder_of(path) {
    return sub(/\/[^\/]*$/, "", path) ? path "/" : ""
  }
  # Without "." and "..".
  function plain(path) {
    gsub(/\/\.\//, "/", path)
    sub(/^\.\//, "", path)
    while (match(path, /[^\/]+\/\.\.\//)) path = substr(path, 1, RSTART - 1) substr(path, RSTART + RLENGTH)
    sub(/\/\.$|\/$/, "", path)
    return path
  }
  FNR == 1 { fenced = 0 }
  /^```/ { fenced = !fenced }
  fenced { next }
  /^#/ {
    name = FILENAME "#" anchor_of($0)
    anchors[known[name]++ ? name "-" (known[name] - 1) : name]
  }
  {
    text = $0
    gsub(/`[^`]*`/, "`", text)
    while (match(text, /\]\([^) ]+\)/)) {
      target = substr(text, RSTART + 2, RLENGTH - 3)
      text = substr(text, RSTART + RLENGTH)
      if (target ~ /^[a-z]+:/) continue
      links[++count] = target
      from[count] = FILENAME
      line[count] = FNR
    }
  }
  END {
    for (i = 1; i <= count; ++i) {
      at = index(links[i], "#")
      path = at == 0 ? links[i] : substr(links[i], 1, at - 1)
      anchor = at == 0 ? "" : substr(links[i], at)
      path = path == "" ? from[i] : plain(folder_of(from[i]) path)
      linked[from[i] " " path]
      if (system("test -e \"" path "\"") != 0) report(i, "no such file: " path)
      else if (anchor != "" && !((path anchor) in anchors)) report(i, "no such heading in " path ": " anchor)
    }
    for (i = 1; i < ARGC; ++i)
      if (ARGV[i] ~ /^docs\/[^\/]*$/ && ARGV[i] != "docs/README.md" &&
          !(("docs/README.md " ARGV[i]) in linked)) {
        print "docs/README.md does not lead to " ARGV[i]
        failed = 1
      }
    exit failed
  }
  function report(i, what) {
    print from[i] ":" line[i] ": " links[i] ": " what
    failed = 1
  }
' $pages
