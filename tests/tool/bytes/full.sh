# Writes two compiled files with all that can be in one, byte by byte:
# . "$BOARDS/../bytes/full.sh". The comments give the offsets; lengths and counts are written out.
. "$BOARDS/../bytes/functions.sh"

# full.meta: a section of every kind, 0x618 bytes.
{
  printf 'MORV RUX meta.\000\000'
  word 0x01000000 0
  zeros 104
  word 0x3F0 0x410 0x430 0x460 0x470 0x490 0x4B0 0x4D0 0x4F0 0x510
  zeros 88
  # 100 sections
  word 14
  # 104 section 0: MORVRUX
  word 0x01000001 1
  # 10C VERSION
  word 0x02000001 1 0x12000000
  # 118 section 1: SYSTEM
  word 0x01000003 5
  # 120 TYPE
  word 0x02000002 1 0x11000001
  # 12C MODEL
  word 0x02000013 1 0x12000001
  # 138 FLAG
  word 0x02000003 1 0x11000000
  # 144 RUXLOOP
  word 0x02000006 1 0x11000001
  # 150 P_SLOT
  word 0x03000001 1 0x12000002
  # 15C section 2: GROUP
  word 0x01000004 3
  # 164 PARENT
  word 0x02000014 1 0x18000000
  # 170 NAME
  word 0x02000015 1 0x18000001
  # 17C CHILDGROUP
  word 0x02000007 1 0x11000000
  # 188 section 3: GROUP
  word 0x01000004 4
  # 190 PARENT
  word 0x02000014 1 0x18000001
  # 19C NAME
  word 0x02000015 1 0x18000002
  # 1A8 CHILDGROUP
  word 0x02000007 1 0x11000000
  # 1B4 VALUE_EXIT
  word 0x05000005 1 0x1E000000
  # 1C0 section 4: SENSOR
  word 0x01000005 9
  # 1C8 PARENT
  word 0x02000014 1 0x18000002
  # 1D4 NAME
  word 0x02000015 1 0x12000002
  # 1E0 ID
  word 0x02000008 1 0x11000002
  # 1EC TYPE
  word 0x02000002 1 0x11000001
  # 1F8 INITFLAG
  word 0x02000009 1 0x11000001
  # 204 CONTROLMASK
  word 0x0200000A 1 0x11000000
  # 210 VALUE
  word 0x05000001 3 0x1E00000A 0x1C000000 0x11000001
  # 224 P_RACK
  word 0x03000000 1 0x12000003
  # 230 VALUE_FAN
  word 0x05000006 3 0x1E000003 0x1A000000 0x1D000001
  # 244 section 5: DEVICE
  word 0x01000006 5
  # 24C NAME
  word 0x02000015 1 0x12000002
  # 258 ID
  word 0x02000008 1 0x11000001
  # 264 INITFLAG
  word 0x02000009 1 0x11000001
  # 270 CONTROLMASK
  word 0x0200000A 1 0x11000000
  # 27C VALUE_FAN
  word 0x05000006 6 0x1E000005 0x04000000 0x11000000 0x11000001 0x1D000000 0x11000002
  # 29C section 6: ACTION
  word 0x01000007 4
  # 2A4 NAME
  word 0x02000015 1 0x1A000000
  # 2B0 ARGNUMBER
  word 0x02000010 1 0x11000001
  # 2BC VALUE
  word 0x05000001 6 0x1E000002 0x1F000065 0x1D000001 0x05000007 0x11000000 0x11000001
  # 2DC VALUE_7
  word 0x05000007 3 0x1E000007 0x1D000000 0x04000000
  # 2F0 section 7: TABLE
  word 0x01000008 2
  # 2F8 NAME
  word 0x02000015 1 0x12000004
  # 304 TYPE
  word 0x02000002 1 0x11000001
  # 310 section 8: PELMGROUP
  word 0x01000009 4
  # 318 NAME
  word 0x02000015 1 0x12000003
  # 324 ID
  word 0x02000008 1 0x11000001
  # 330 PID
  word 0x02000011 1 0x11000000
  # 33C SENSORS
  word 0x02000016 1 0x11000002
  # 348 section 9: PELMGROUP
  word 0x01000009 4
  # 350 NAME
  word 0x02000015 1 0x12000004
  # 35C ID
  word 0x02000008 1 0x11000002
  # 368 PID
  word 0x02000011 1 0x11000001
  # 374 SENSORS
  word 0x02000016 0
  # 37C section 10: GLOBAL
  word 0x0100000A 1
  # 384 G_FAN
  word 0x04000000 2 0x1E000065 0x11000002
  # 394 section 11: PROPERTY
  word 0x01000002 1
  # 39C RACK
  word 0x03000000 1 0x12000003
  # 3A8 section 12: PROPERTY
  word 0x01000002 1
  # 3B0 SLOT
  word 0x03000001 1 0x12000003
  # 3BC section 13: REPEATER
  word 0x0100000B 2
  # 3C4 R
  word 0x06000000 3 0x11000002 0x1A000000 0xFFFFFFFF
  # 3D8 S
  word 0x06000001 0
  # 3E0 padding
  zeros 16
  # 3F0 properties
  word 0x03000000 10
  printf 'RACK\000SLOT\000'
  zeros 14
  # 410 globals
  word 0x04000000 9
  printf 'FAN\000GONE\000'
  zeros 15
  # 430 values
  word 0x05000000 35
  printf 'IPMI\000\000INIT\000DEINIT\000ENTRY\000EXIT\000FAN\0007\000'
  zeros 5
  # 460 repeaters
  word 0x06000000 4
  printf 'R\000S\000'
  zeros 4
  # 470 numbers
  word 0x11000000 12
  word 0 1 257
  zeros 12
  # 490 strings
  word 0x12000000 16
  printf '1.0\000\000T1\000r\000CURVE\000'
  zeros 8
  # 4B0 groups
  word 0x18000000 12
  printf '0\000BOARD\000CPU\000'
  zeros 12
  # 4D0 actions
  word 0x1A000000 11
  printf 'START\000GONE\000'
  zeros 13
  # 4F0 names of tables
  word 0x1C000000 11
  printf 'CURVE\000GONE\000'
  zeros 13
  # 510 cells
  word 0x1B000000 256
  zeros 256
} > full.meta

# full.metad: sections of several kinds and a block without any, 0x796 bytes.
{
  printf 'MORV RUX metaD.\000'
  word 0x01000000 0
  zeros 104
  # 080 defined words
  word 4
  # 084 BUS
  text BUS
  word 5
  # 08F CALC
  text CALC
  word 2
  # 09B LIST
  text LIST
  word 7
  # 0A7 NUM
  text NUM
  word 1
  # 0B2 kinds
  word 9
  # 0B6 kind block 0
  word 1
  # 0BA section 0: DEFINE
  word 225
  word 43
  # 0C2 object
  word 0x2000000C 2 1 0
  text DEFINE
  # 0DC source files
  word 1
  text board.rux
  # 0ED entries
  word 4
  # 0F1 entry 0: BUS
  word 39
  word 23
  # 0F9 object
  word 0x10010001 10 2 0
  text 'BUS'
  word 8
  # 114 payload
  word 0x10010001
  word 5
  # 11C entry 1: CALC
  word 40
  word 24
  # 124 object
  word 0x10010001 10 3 0
  text 'CALC'
  word 8
  # 140 payload
  word 0x10010001
  word 2
  # 148 entry 2: LIST
  word 40
  word 24
  # 150 object
  word 0x10010001 10 4 0
  text 'LIST'
  word 8
  # 16C payload
  word 0x10010001
  word 7
  # 174 entry 3: NUM
  word 39
  word 23
  # 17C object
  word 0x10010001 10 5 0
  text 'NUM'
  word 8
  # 197 payload
  word 0x10010001
  word 1
  # 19F kind block 1
  word 1
  # 1A3 section 0: MORVRUX
  word 85
  word 27
  # 1AB object
  word 0x20000001 1 6 0
  text MORVRUX
  # 1C6 entries
  word 1
  # 1CA entry 0: VERSION
  word 46
  word 27
  # 1D2 object
  word 0x10020001 1 7 0
  text 'VERSION'
  word 11
  # 1F1 payload
  word 0x10020001
  text '1.0'
  # 1FC kind block 2
  word 2
  # 200 section 0: ACTION
  word 252
  word 26
  # 208 object
  word 0x20000007 2 8 0
  text ACTION
  # 222 entries
  word 4
  # 226 entry 0: NAME
  word 45
  word 24
  # 22E object
  word 0x10020015 1 9 0
  text 'NAME'
  word 13
  # 24A payload
  word 0x10020015
  text 'START'
  # 257 entry 1: ARGNUMBER
  word 46
  word 29
  # 25F object
  word 0x10028010 2 10 0
  text 'ARGNUMBER'
  word 9
  # 280 payload
  word 0x10028010
  text '1'
  # 289 entry 2: an entry that is not given
  word 32
  word 20
  # 291 object
  word 0x10080006 38 0 0
  text ''
  word 4
  # 2A9 payload
  word 0
  # 2AD entry 3: VALUE
  word 79
  word 25
  # 2B5 object
  word 0x10080000 38 11 0
  text 'VALUE'
  word 46
  # 2D2 payload
  word 0x10080000
  word 38
  # 2DA value
  word 2
  text CALC == 1 2 3 4
  # 300 section 1: ACTION
  word 273
  word 26
  # 308 object
  word 0x20000007 2 12 0
  text ACTION
  # 322 entries
  word 5
  # 326 entry 0: NAME
  word 45
  word 24
  # 32E object
  word 0x10020015 1 13 0
  text 'NAME'
  word 13
  # 34A payload
  word 0x10020015
  text 'PAUSE'
  # 357 entry 1: an entry that is not given
  word 32
  word 20
  # 35F object
  word 0x10028010 2 0 0
  text ''
  word 4
  # 377 payload
  word 0
  # 37B entry 2: an entry that is not given
  word 32
  word 20
  # 383 object
  word 0x10080006 38 0 0
  text ''
  word 4
  # 39B payload
  word 0
  # 39F entry 3: an entry that is not given
  word 32
  word 20
  # 3A7 object
  word 0x10080000 38 0 0
  text ''
  word 4
  # 3BF payload
  word 0
  # 3C3 entry 4: VALUE_1
  word 78
  word 27
  # 3CB object
  word 0x10080007 14 14 0
  text 'VALUE_1'
  word 43
  # 3EA payload
  word 0x10080007
  word 35
  # 3F2 value
  word 2
  text CALC + 1 2 '' ''
  # 415 kind block 3
  word 1
  # 419 section 0: GLOBAL
  word 199
  word 26
  # 421 object
  word 0x2000000A 2 15 0
  text GLOBAL
  # 43B entries
  word 2
  # 43F entry 0: G_A
  word 79
  word 23
  # 447 object
  word 0x10080001 46 16 0
  text 'G_A'
  word 48
  # 462 payload
  word 0x10080001
  word 40
  # 46A value
  word 5
  text BUS 0 1 2 3
  # 489 arguments
  word 1
  text 4
  # 492 entry 1: G_B
  word 78
  word 23
  # 49A object
  word 0x10080001 46 17 0
  text 'G_B'
  word 47
  # 4B5 payload
  word 0x10080001
  word 39
  # 4BD value
  word 7
  text LIST
  # 4C9 arguments
  word 4
  text 1 2 3 abcd
  # 4E4 kind block 4
  word 2
  # 4E8 section 0: PROPERTY
  word 79
  word 28
  # 4F0 object
  word 0x20000002 2 18 0
  text PROPERTY
  # 50C entries
  word 1
  # 510 entry 0: AB
  word 39
  word 22
  # 518 object
  word 0x10020017 10 19 0
  text 'AB'
  word 9
  # 532 payload
  word 0x10020017
  text 'x'
  # 53B section 1: PROPERTY
  word 79
  word 28
  # 543 object
  word 0x20000002 2 20 0
  text PROPERTY
  # 55F entries
  word 1
  # 563 entry 0: CD
  word 39
  word 22
  # 56B object
  word 0x10020017 10 21 0
  text 'CD'
  word 9
  # 585 payload
  word 0x10020017
  text 'y'
  # 58E kind block 5
  word 1
  # 592 section 0: REPEATER
  word 99
  word 28
  # 59A object
  word 0x2000000B 2 22 0
  text REPEATER
  # 5B6 entries
  word 1
  # 5BA entry 0: R
  word 59
  word 21
  # 5C2 object
  word 0x10100001 10 23 0
  text 'R'
  word 30
  # 5DB payload
  word 0x10100001
  text 2 START
  word 1
  text ARG1
  # 5F9 kind block 6
  word 1
  # 5FD section 0: PELMGROUP
  word 226
  word 29
  # 605 object
  word 0x20000009 1 24 0
  text PELMGROUP
  # 622 entries
  word 4
  # 626 entry 0: NAME
  word 41
  word 24
  # 62E object
  word 0x10020015 1 25 0
  text 'NAME'
  word 9
  # 64A payload
  word 0x10020015
  text 'P'
  # 653 entry 1: ID
  word 39
  word 22
  # 65B object
  word 0x10028008 1 26 0
  text 'ID'
  word 9
  # 675 payload
  word 0x10028008
  text '1'
  # 67E entry 2: PID
  word 40
  word 23
  # 686 object
  word 0x10028011 1 27 0
  text 'PID'
  word 9
  # 6A1 payload
  word 0x10028011
  text '0'
  # 6AA entry 3: SENSORS
  word 53
  word 27
  # 6B2 object
  word 0x10048001 1 28 0
  text 'SENSORS'
  word 18
  # 6D1 payload
  word 0x10048001
  word 2
  text 2 3
  # 6E3 kind block 7
  word 1
  # 6E7 section 0: TABLE
  word 167
  word 25
  # 6EF object
  word 0x20000008 2 29 0
  text TABLE
  # 708 entries
  word 3
  # 70C entry 0: NAME
  word 41
  word 24
  # 714 object
  word 0x10020015 1 30 0
  text 'NAME'
  word 9
  # 730 payload
  word 0x10020015
  text 'T'
  # 739 entry 1: TYPE
  word 41
  word 24
  # 741 object
  word 0x10028002 1 31 0
  text 'TYPE'
  word 9
  # 75D payload
  word 0x10028002
  text '1'
  # 766 entry 2: 0.9
  word 40
  word 23
  # 76E object
  word 0x10020012 10 32 0
  text '0.9'
  word 9
  # 789 payload
  word 0x10020012
  text '5'
  # 792 kind block 8
  word 0
} > full.metad
