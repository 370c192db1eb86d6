# The example that reads through the read model: check_readings.sh RUX PROGRAM SCRIPT
set -eu
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
"$1" compile "$3" -o "$folder/server.meta" >"$folder/compiled" 2>&1
printf 'CPU0_TEMP 104\nCPU1_TEMP 60\nCPU9_TEMP 60\n' | "$2" "$folder/server.meta" >"$folder/printed"
diff - "$folder/printed" <<END
CPU0_TEMP: 104 is above THRESHOLD_WH (92)
CPU0_TEMP: 104 is above THRESHOLD_FH (100)
readings: 3, beyond a threshold: 1, of unknown sensors: 1
END

# A threshold below zero; and a file that lost its end to zeros, of which there is a reason.
rux=$1
sed 's/^THRESHOLD_FL = 1 .*/THRESHOLD_FL = -20/' "$(dirname "$3")/../first/first.rux" >"$folder/cold.rux"
"$rux" compile "$folder/cold.rux" -o "$folder/cold.meta" >"$folder/compiled" 2>&1
printf 'INLET_TEMP 3\nINLET_TEMP -21\n' | "$2" "$folder/cold.meta" >"$folder/printed"
diff - "$folder/printed" <<END
INLET_TEMP: 3 is below THRESHOLD_WL (5)
INLET_TEMP: -21 is below THRESHOLD_FL (-20)
INLET_TEMP: -21 is below THRESHOLD_WL (5)
readings: 2, beyond a threshold: 2, of unknown sensors: 0
END
dd if=/dev/zero of="$folder/cold.meta" bs=1 seek=256 count=4 conv=notrunc 2>/dev/null
status=0
"$2" "$folder/cold.meta" </dev/null >"$folder/printed" 2>&1 || status=$?
[ $status -eq 1 ]
grep -q "cold.meta: offset 0x104, sections, padding: " "$folder/printed"
