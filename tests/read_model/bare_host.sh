# A host without exceptions, RTTI and library: bare_host.sh RUX PROGRAM EXAMPLES
set -eu
rux=$1 program=$2
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
"$rux" compile "$3/first/first.rux" -o "$folder/first.meta" >"$folder/compiled" 2>&1
"$rux" compile "$3/server/server.rux" -o "$folder/server.meta" >"$folder/compiled" 2>&1
cd "$folder"

"$program" first.meta server.meta >printed
for meta in first.meta server.meta; do
  "$rux" ls $meta SENSOR | while read -r ordinal id name; do
    limit=$("$rux" get $meta "SENSOR/$ordinal/THRESHOLD_FH" 2>/dev/null) || limit=
    echo "$meta: $name $id${limit:+ THRESHOLD_FH ${limit%% *}}"
  done
done >expected
[ "$(wc -l <expected)" -gt 5 ]
diff expected printed

# The reason against a damaged file is the one that `rux verify` gives first.
dd if=/dev/zero of=server.meta bs=1 seek=256 count=4 conv=notrunc 2>/dev/null
status=0
"$program" first.meta server.meta >printed 2>reason || status=$?
[ $status -eq 1 ]
[ ! -s printed ]
grep -q '^server.meta: offset 0x[0-9A-F]*, ' reason
"$rux" verify server.meta 2>&1 | grep -qF "$(sed 's/^server.meta: //' reason)"
