#!/bin/sh
# hardening.sh READELF OBJDUMP FILE...: whether programs and libraries have what they are said to be
# built with.
readelf=$1
objdump=$2
shift 2
failed=0
need() {
  printf '%s\n' "$2" | grep -q "$3" && return
  echo "$1: $4 is missing" >&2
  failed=1
}
for file in "$@"; do
  need "$file" "$("$readelf" -hW "$file")" 'Type: *DYN' 'position-independent code'
  need "$file" "$("$readelf" -lW "$file")" GNU_RELRO 'RELRO'
  need "$file" "$("$readelf" -dW "$file")" NOW 'binding at start, which makes RELRO full'
  need "$file" "$("$readelf" -lW "$file")" 'GNU_STACK.* RW ' 'a stack that is not executable'
  need "$file" "$("$readelf" -sW "$file")" __stack_chk_fail 'the stack protector'
  # A place that indirect calls may go to begins with this instruction.
  case $("$readelf" -hW "$file") in
    *X86-64*)
      need "$file" "$("$objdump" -d --no-show-raw-insn "$file")" endbr64 'control-flow protection'
      ;;
  esac
done
# Only where something is copied into a buffer of known size there is something to fortify.
need "$1" "$("$readelf" -sW "$1")" '__\(mem\|str\|[a-z]*printf\)[a-z]*_chk' '_FORTIFY_SOURCE'
exit $failed
