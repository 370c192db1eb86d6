# Writes two small compiled files, byte by byte: . "$BOARDS/../bytes/sample.sh"
. "$BOARDS/../bytes/functions.sh"

# sample.metad: a script of one defined word and one sensor, of which THEORY was not given. The
# comments tell the offsets; lengths and counts are written out.
{
  printf 'MORV RUX metaD.\000'
  word 0x01000000 0
  zeros 104
  # 080 defined words
  word 1
  text VT_READ
  word 5
  # 093 kinds
  word 2
  # 097 kind block 0
  word 1
  word 102
  # 09F section 0
  word 47
  word 0x2000000C 2 1 0
  text DEFINE
  # 0BD source files
  word 1
  text 'dir\board.rux'
  # 0D2 entries
  word 1
  word 43
  # 0DA entry 0
  word 27
  word 0x10010001 10 2 0
  text VT_READ
  word 8
  word 0x10010001 5
  # 105 kind block 1
  word 1
  word 231
  # 10D section 0
  word 26
  word 0x20000005 2 4 0
  text SENSOR
  # 12B entries
  word 3
  word 49
  # 133 entry 0
  word 24
  word 0x10020015 1 5 0
  text NAME
  word 17
  word 0x10020015
  text CPU0_TEMP
  # 164 entry 1
  word 32
  word 20
  word 0x1002800B 2 0 0 0
  word 4
  word 0
  # 188 entry 2
  word 104
  word 25
  word 0x10080000 37 6 0
  text VALUE
  word 71
  word 0x10080000
  word 63
  # 1B5 the value
  word 5
  text VT_READ 0x2E 8 BUSTYPE_SMBUS 0
  word 1
  text G_FAN
} > sample.metad

# sample.meta: one sensor, whose value is a cell of the one table.
{
  printf 'MORV RUX meta.\000\000'
  word 0x01000000 0
  zeros 104
  word 0x130 0x140 0x150 0x180 0x190 0x1A0 0x1C0 0x1D0 0x1E0 0x1F0
  zeros 88
  # 100 sections
  word 1
  word 0x01000005 2
  word 0x02000015 1 0x12000000
  word 0x05000001 3 0x1E00000A 0x1C000000 0x11000000
  zeros 4
  # 130 properties and globals
  word 0x03000000 0
  zeros 8
  word 0x04000000 0
  zeros 8
  # 150 values
  word 0x05000000 29
  printf 'IPMI\000\000INIT\000DEINIT\000ENTRY\000EXIT\000'
  zeros 11
  # 180 repeaters
  word 0x06000000 0
  zeros 8
  # 190 numbers
  word 0x11000000 4
  word 16
  zeros 4
  # 1A0 strings
  word 0x12000000 10
  printf 'CPU0_TEMP\000'
  zeros 14
  # 1C0 groups
  word 0x18000000 2
  printf '0\000'
  zeros 6
  # 1D0 actions
  word 0x1A000000 0
  zeros 8
  # 1E0 names of tables
  word 0x1C000000 4
  printf 'FAN\000'
  zeros 4
  # 1F0 cells
  word 0x1B000000 256
  zeros 16
  printf '\050'
  zeros 239
} > sample.meta
