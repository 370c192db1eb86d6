# The example that reads through the read model: check_readings.sh RUX PROGRAM SCRIPT
set -eu
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
"$1" compile "$3" -o "$folder/server.meta" >"$folder/compiled" 2>&1
printf 'CPU0_TEMP 104\nCPU1_TEMP 60\nCPU9_TEMP 60\n' | "$2" "$folder/server.meta" >"$folder/told"
diff - "$folder/told" <<END
CPU0_TEMP: 104 is above THRESHOLD_WH (92)
CPU0_TEMP: 104 is above THRESHOLD_FH (100)
readings: 3, beyond a threshold: 1, of unknown sensors: 1
END
