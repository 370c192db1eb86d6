// A meta file with one section of every compiled kind, and what tests of writing and reading share.
#ifndef TESTS_API_META_SAMPLE_H_
#define TESTS_API_META_SAMPLE_H_

#include <map>
#include <string>

#include "tests/api/meta_bytes.h"
#include "tests/support/bytes.h"

#define EXPECT_BYTES(actual, expected) EXPECT_EQ(HexDump(actual), HexDump((expected).str()))

using namespace std::string_literals;

using Names = std::map<std::string, std::uint32_t>;
using Numbers = std::map<std::uint32_t, std::uint32_t>;

// The six names that every value table begins with, in index order: 29 bytes.
inline const std::string kFixedValueNames = "IPMI\0\0INIT\0DEINIT\0ENTRY\0EXIT\0"s;

// One section of every compiled kind.
inline const char kCompleteScript[] =
    "[DEFINE]\n"
    "VT_READ = 1\n"
    "VT_COMPARE = 2\n"
    "VT_CALL = 3\n"
    "VT_CELL = 10\n"
    "ST_TEMP = 0x21\n"
    "[MORVRUX]\n"
    "VERSION = 1.0\n"
    "[PROPERTY]\n"
    "COLOR = red\n"
    "[SYSTEM]\n"
    "TYPE = 1\n"
    "MODEL = X1\n"
    "FLAG = 0\n"
    "RUXLOOP = 1000\n"
    "P_SITE = lab\n"
    "[GROUP]\n"
    "PARENT = 0\n"
    "NAME = BOARD\n"
    "CHILDGROUP = 0\n"
    "VALUE_INIT = VT_CALL,BEEP,7\n"
    "[PELMGROUP]\n"
    "NAME = EVENTS\n"
    "ID = 1\n"
    "PID = 0\n"
    "SENSORS = 0x101\n"
    "[SENSOR]\n"
    "PARENT = BOARD\n"
    "NAME = INLET\n"
    "ID = 0x101\n"
    "TYPE = ST_TEMP\n"
    "INITFLAG = 3\n"
    "CONTROLMASK = 0\n"
    "THRESHOLD_FH = 45\n"
    "VALUE = VT_READ,G_SPEED\n"
    "VALUE_RAW = VT_READ,257\n"
    "P_ROOM = lab\n"
    "[DEVICE]\n"
    "NAME = FAN\n"
    "ID = 0x201\n"
    "INITFLAG = 3\n"
    "CONTROLMASK = 0\n"
    "P_SITE = rack\n"
    "[ACTION]\n"
    "NAME = BEEP\n"
    "ARGNUMBER = 1\n"
    "VALUE = VT_COMPARE,==,ARG1,VALUE_1,1,0\n"
    "VALUE_1 = VT_CELL,CURVE,ARG1\n"
    "[TABLE]\n"
    "NAME = CURVE\n"
    "TYPE = 2\n"
    "0.1 = 9\n"
    "[GLOBAL]\n"
    "G_SPEED = VT_READ,7\n"
    "[REPEATER]\n"
    "TICK = 5,BEEP,G_SPEED\n";

inline ByteString CompleteMeta() {
  ByteString meta = MetaHeader({864, 896, 912, 960, 976, 1040, 1104, 1136, 1152, 1168, 0});
  meta.Words({11});                         // count of sections
  meta.Words({0x01000001, 1});              // MORVRUX, 1 entry
  meta.Words({0x02000001, 1, 0x12000000});  // VERSION, 1 value: string 0, "1.0"
  meta.Words({0x01000002, 1});              // PROPERTY, 1 entry
  meta.Words({0x03000000, 1, 0x12000001});  // COLOR: string 1, "red"
  meta.Words({0x01000003, 5});              // SYSTEM, 5 entries
  meta.Words({0x02000002, 1, 0x11000000});  // TYPE: number 0, 1
  meta.Words({0x02000013, 1, 0x12000002});  // MODEL: string 2, "X1"
  meta.Words({0x02000003, 1, 0x11000001});  // FLAG: number 1, 0
  meta.Words({0x02000006, 1, 0x11000002});  // RUXLOOP: number 2, 1000
  meta.Words({0x03000002, 1, 0x12000003});  // SITE: string 3, "lab"
  meta.Words({0x01000004, 4});              // GROUP, 4 entries
  meta.Words({0x02000014, 1, 0x18000000});  // PARENT: the root
  meta.Words({0x02000015, 1, 0x18000001});  // NAME: group 1, "BOARD"
  meta.Words({0x02000007, 1, 0x11000001});  // CHILDGROUP: number 1, 0
  meta.Words({0x05000002, 3, 0x1E000003,    // VALUE_INIT: type 3,
              0x1A000000, 0x11000003});     //   action 0, number 3, 7
  meta.Words({0x01000009, 4});              // PELMGROUP, 4 entries
  meta.Words({0x02000015, 1, 0x12000004});  // NAME: string 4, "EVENTS"
  meta.Words({0x02000008, 1, 0x11000000});  // ID: number 0, 1
  meta.Words({0x02000011, 1, 0x11000001});  // PID: number 1, 0
  meta.Words({0x02000016, 1, 0x11000004});  // SENSORS: number 4, 257
  meta.Words({0x01000005, 10});             // SENSOR, 10 entries
  meta.Words({0x02000014, 1, 0x18000001});  // PARENT: group 1
  meta.Words({0x02000015, 1, 0x12000005});  // NAME: string 5, "INLET"
  meta.Words({0x02000008, 1, 0x11000004});  // ID: number 4, 257
  meta.Words({0x02000002, 1, 0x11000005});  // TYPE: number 5, 33
  meta.Words({0x02000009, 1, 0x11000006});  // INITFLAG: number 6, 3
  meta.Words({0x0200000A, 1, 0x11000001});  // CONTROLMASK: number 1, 0
  meta.Words({0x0200000C, 1, 0x11000007});  // THRESHOLD_FH: number 7, 45
  meta.Words({0x05000001, 2, 0x1E000001,    // VALUE: type 1,
              0x04000000});                 //   global 0
  meta.Words({0x05000006, 2, 0x1E000001,    // VALUE_RAW: type 1,
              0x11000004});                 //   number 4, 257
  meta.Words({0x03000001, 1, 0x12000003});  // ROOM: string 3, "lab"
  meta.Words({0x01000006, 5});              // DEVICE, 5 entries
  meta.Words({0x02000015, 1, 0x12000006});  // NAME: string 6, "FAN"
  meta.Words({0x02000008, 1, 0x11000008});  // ID: number 8, 513
  meta.Words({0x02000009, 1, 0x11000006});  // INITFLAG: number 6, 3
  meta.Words({0x0200000A, 1, 0x11000001});  // CONTROLMASK: number 1, 0
  meta.Words({0x03000002, 1, 0x12000007});  // SITE: string 7, "rack"
  meta.Words({0x01000007, 4});              // ACTION, 4 entries
  meta.Words({0x02000015, 1, 0x1A000000});  // NAME: action 0, "BEEP"
  meta.Words({0x02000010, 1, 0x11000000});  // ARGNUMBER: number 0, 1
  meta.Words({0x05000001, 6, 0x1E000002,    // VALUE: type 2,
              0x1F000065, 0x1D000001,       //   "==", argument 1,
              0x05000007,                   //   value 7, "1",
              0x11000000, 0x11000001});     //   number 0, 1, and number 1, 0
  meta.Words({0x05000007, 3, 0x1E00000A,    // VALUE_1: type 10,
              0x1C000000, 0x1D000001});     //   table 0, argument 1
  meta.Words({0x01000008, 2});              // TABLE, 2 entries: its row ends it
  meta.Words({0x02000015, 1, 0x12000008});  // NAME: string 8, "CURVE"
  meta.Words({0x02000002, 1, 0x11000009});  // TYPE: number 9, 2
  meta.Words({0x0100000A, 1});              // GLOBAL, 1 entry
  meta.Words({0x04000000, 2, 0x1E000001,    // SPEED: type 1,
              0x11000003});                 //   number 3, 7
  meta.Words({0x0100000B, 1});              // REPEATER, 1 entry
  meta.Words({0x06000000, 3, 0x1100000A,    // TICK: number 10, 5,
              0x1A000000, 0x04000000});     //   action 0, global 0
  EXPECT_EQ(meta.size(), 860u);
  meta.ZerosUpTo(864).Words({0x03000000, 16}).Text("COLOR\0ROOM\0SITE\0"s);   // properties
  meta.ZerosUpTo(896).Words({0x04000000, 6}).Terminated("SPEED");             // globals
  meta.ZerosUpTo(912).Words({0x05000000, 35}).Text(kFixedValueNames);         // values
  meta.Terminated("RAW").Terminated("1");                                     //
  meta.ZerosUpTo(960).Words({0x06000000, 5}).Terminated("TICK");              // repeaters
  meta.ZerosUpTo(976).Words({0x11000000, 44});                                // numbers
  meta.Words({1, 0, 1000, 7, 257, 33, 3, 45, 513, 2, 5});                     //
  meta.ZerosUpTo(1040).Words({0x12000000, 43});                               // strings
  meta.Text("1.0\0red\0X1\0lab\0EVENTS\0INLET\0FAN\0rack\0CURVE\0"s);         //
  meta.ZerosUpTo(1104).Words({0x18000000, 8}).Text("0\0BOARD\0"s);            // groups: up to 1120
  meta.ZerosUpTo(1136).Words({0x1A000000, 5}).Terminated("BEEP");             // actions
  meta.ZerosUpTo(1152).Words({0x1C000000, 6}).Terminated("CURVE");            // table names
  meta.ZerosUpTo(1168).Words({0x1B000000, 256}).Text("\x09\x09").Zeros(254);  // table cells
  EXPECT_EQ(meta.size(), 1432u);
  return meta;
}

#endif  // TESTS_API_META_SAMPLE_H_
