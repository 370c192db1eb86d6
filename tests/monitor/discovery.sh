# The example monitor finds chips where the kernel has them, in a /sys that umockdev makes up:
# discovery.sh RUX MONITOR SCRIPTS
set -eu
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
"$1" compile "$3/discovery.rux" -o "$folder/board.meta" >"$folder/compiled" 2>&1
umockdev-run --device "$3/discovery.umockdev" -- "$2" "$folder/board.meta" --once \
  --metrics "$folder/board.prom" 2>"$folder/journal"
diff - "$folder/journal" <<END
<6>$folder/board.meta: sensors read: 3 of 3
<4>SECOND_CHIP: 43 degrees C, WH (above 40 degrees C)
END
grep '^rux_sensor_reading' "$folder/board.prom" >"$folder/readings"
diff - "$folder/readings" <<END
rux_sensor_reading{sensor="FIRST_CHIP"} 38
rux_sensor_reading{sensor="SECOND_CHIP"} 43
rux_sensor_reading{sensor="SUPPLY"} 12100
END
