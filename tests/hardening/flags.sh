#!/bin/sh
# flags.sh COMMANDS FLAG...: whether every product source is compiled with each flag. COMMANDS is the
# compile_commands.json of the build.
commands=$1
shift
product=$(grep '"command":' "$commands" | grep -Ev '/(tests|bench|examples|fuzz|docs)/[^ ]*"?,?$')
[ -n "$product" ] || { echo "$commands names no sources" >&2; exit 1; }
failed=0
for flag in "$@"; do
  without=$(printf '%s\n' "$product" | grep -vFe " $flag ")
  [ -z "$without" ] && continue
  echo "without $flag: $without" | head -n 3 >&2
  failed=1
done
exit $failed
