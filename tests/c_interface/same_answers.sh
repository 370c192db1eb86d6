# What C sees of meta files is what the read model has, sound or damaged:
#   same_answers.sh RUX GENERATOR EXAMPLES MODEL_PROGRAM C_PROGRAM...
set -eu
rux=$1 generator=$2 examples=$3 model=$4
shift 4
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT

"$rux" compile "$examples/first/first.rux" -o "$folder/first.meta" >"$folder/compiled" 2>&1
"$rux" compile "$examples/server/server.rux" -o "$folder/server.meta" >"$folder/compiled" 2>&1
"$generator" rich rux 300 "$folder/rich.rux" >"$folder/generated"
"$rux" compile "$folder/rich.rux" -o "$folder/rich.meta" >"$folder/compiled" 2>&1

# compare META: both answer the same, and return the same.
compare() {
  expected=0
  "$model" "$1" >"$folder/expected" || expected=$?
  for program in "$@"; do
    [ "$program" != "$1" ] || continue
    status=0
    "$program" "$1" >"$folder/found" || status=$?
    [ $status -eq $expected ] || { echo "$1: $program returned $status"; exit 1; }
    cmp "$folder/expected" "$folder/found" || { echo "$1 ($2)"; exit 1; }
  done
}

for meta in first server rich; do
  compare "$folder/$meta.meta" "$@"
  [ $expected -eq 0 ]
done

# One byte in every 13 changed, one file cut there.
size=$(wc -c <"$folder/first.meta")
refused=0
for offset in $(seq 0 13 $((size - 1))); do
  cp "$folder/first.meta" "$folder/damaged.meta"
  printf '\377' | dd of="$folder/damaged.meta" bs=1 seek="$offset" conv=notrunc 2>"$folder/dd"
  compare "$folder/damaged.meta" "$@"
  refused=$((refused + expected))
  head -c "$offset" "$folder/first.meta" >"$folder/damaged.meta"
  compare "$folder/damaged.meta" "$@"
  refused=$((refused + expected))
done
[ "$refused" -gt $((size / 13)) ] || { echo "only $refused damaged files were refused"; exit 1; }
