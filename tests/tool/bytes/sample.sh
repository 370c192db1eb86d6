# Writes two small compiled files, byte by byte: . "$BOARDS/../bytes/sample.sh"
. "$BOARDS/../bytes/functions.sh"

# sample.metad: a script of one defined word and one action, whose ARGNUMBER and VALUE_IPMI were not
# given. The comments give the offsets; lengths and counts are written out.
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
  word 267
  # 10D section 0
  word 26
  word 0x20000007 2 4 0
  text ACTION
  # 12B entries
  word 4
  word 49
  # 133 entry 0
  word 24
  word 0x10020015 1 5 0
  text NAME
  word 17
  word 0x10020015
  text FAN_START
  # 164 entry 1
  word 32
  word 20
  word 0x10028010 2 0 0 0
  word 4
  word 0
  # 188 entry 2
  word 32
  word 20
  word 0x10080006 38 0 0 0
  word 4
  word 0
  # 1AC entry 3
  word 104
  word 25
  word 0x10080000 38 6 0
  text VALUE
  word 71
  word 0x10080000
  word 63
  # 1D9 the value
  word 5
  text VT_READ 0x2E 8 BUSTYPE_SMBUS 0
  word 1
  text G_FAN
} > sample.metad

# sample.meta: a global that is a cell of the one table.
{
  printf 'MORV RUX meta.\000\000'
  word 0x01000000 0
  zeros 104
  word 0x150 0x160 0x170 0x1A0 0x1B0 0x1C0 0x1D0 0x1E0 0x1F0 0x200
  zeros 88
  # 100 sections
  word 2
  # 104 section 0
  word 0x0100000A 1
  word 0x04000000 3 0x1E00000A 0x1C000000 0x11000000
  # 120 section 1
  word 0x01000008 2
  word 0x02000015 1 0x12000000
  word 0x02000002 1 0x11000000
  # 140 padding after what ends on a boundary
  zeros 16
  # 150 properties
  word 0x03000000 0
  zeros 8
  # 160 globals
  word 0x04000000 4
  printf 'FAN\000'
  zeros 4
  # 170 values
  word 0x05000000 29
  printf 'IPMI\000\000INIT\000DEINIT\000ENTRY\000EXIT\000'
  zeros 11
  # 1A0 repeaters
  word 0x06000000 0
  zeros 8
  # 1B0 numbers
  word 0x11000000 4
  word 16
  zeros 4
  # 1C0 strings
  word 0x12000000 4
  printf 'FAN\000'
  zeros 4
  # 1D0 groups
  word 0x18000000 2
  printf '0\000'
  zeros 6
  # 1E0 actions
  word 0x1A000000 0
  zeros 8
  # 1F0 names of tables
  word 0x1C000000 4
  printf 'FAN\000'
  zeros 4
  # 200 cells
  word 0x1B000000 256
  zeros 16
  printf '\050'
  zeros 239
} > sample.meta
