#!/bin/sh
# Compares what the library exports with what the last release exported; and checks whether the
# comparison would see what programs cannot bear.
#
#   abi.sh SOURCE LIBRARY
set -eu
cd "$1"
library=$2
released=$(echo packaging/abi/*.abi)

scripts/abi "$library"

altered=$(mktemp)
trap 'rm "$altered"' EXIT
# Compares with what a release exported of which the sed script $2 makes the dump; expects the status $1.
compare_altered() {
  sed "$2" "$released" >"$altered"
  ! cmp -s "$released" "$altered" || { echo "nothing to alter: $2"; exit 1; }
  status=0
  scripts/abi --against "$altered" "$library" >/dev/null 2>&1 || status=$?
  test $status = "$1" || { echo "status $status, but $1 is expected of $2"; exit 1; }
}

number=$(sed -n "s/.*<typedef-decl name='uint32_t'.* id='\(.*\)'.*/\1/p" "$released")
gone="s/'gccParse'/'gccParseAll'/g"
argument="/mangled-name='gccOutput'/,/<.function/s/parameter type-id='[^']*'/parameter type-id='$number'/"
variable="/<var-decl name='g_tblDword'/s/ type-id='[^']*'/ type-id='$number'/"
member="/<class-decl name='tagTBLDATA'/,/<.class/s/offset-in-bits='32'/offset-in-bits='96'/"
larger="s/\(<class-decl name='tagTBLDATA' size-in-bits=\)'128'/\1'192'/"
# Programs have copies of the keyword tables, of the size that they had.
table="/<elf-symbol name='g_NTMapEntry'/s/ size='[0-9]*'/ size='16'/"
added="/mangled-name='gccParse'/,/<.function/d; /<elf-symbol name='gccParse'/d"
for alteration in "$gone" "$argument" "$variable" "$member" "$larger" "$table"; do
  compare_altered 1 "$alteration"
done
compare_altered 0 "$added"
