// The meta file as it is written, byte by byte.
#include <ctime>

#include "tests/api/meta_sample.h"

namespace {

class MetaWriteTest : public MetaTest {};

TEST_F(MetaWriteTest, AScriptWithoutSectionsHasTheFixedNamesAndTheRootGroup) {
  ByteString meta = MetaHeader({272, 288, 304, 352, 368, 384, 400, 416, 432, 448, 0});
  meta.Words({0});                                             // 256: no sections
  meta.ZerosUpTo(272).Words({0x03000000, 0});                  // properties
  meta.ZerosUpTo(288).Words({0x04000000, 0});                  // globals
  meta.ZerosUpTo(304).Words({0x05000000, 29});                 // values
  meta.Text(kFixedValueNames);                                 //
  meta.ZerosUpTo(352).Words({0x06000000, 0});                  // repeaters
  meta.ZerosUpTo(368).Words({0x11000000, 0});                  // numbers
  meta.ZerosUpTo(384).Words({0x12000000, 0});                  // strings
  meta.ZerosUpTo(400).Words({0x18000000, 2}).Terminated("0");  // groups: the root
  meta.ZerosUpTo(416).Words({0x1A000000, 0});                  // actions
  meta.ZerosUpTo(432).Words({0x1C000000, 0});                  // table names
  meta.ZerosUpTo(448).Words({0x1B000000, 0});                  // table cells
  ASSERT_EQ(meta.size(), 456u);
  EXPECT_BYTES(Compile(""), meta);
}

TEST_F(MetaWriteTest, ACompleteScript) { EXPECT_BYTES(Compile(kCompleteScript), CompleteMeta()); }

TEST_F(MetaWriteTest, BlocksThatEndOnAMultipleOf16AreStillFollowedByPadding) {
  ByteString meta = MetaHeader({320, 352, 368, 416, 432, 448, 464, 480, 496, 512, 0});
  meta.Words({1});                                                     // count of sections
  meta.Words({0x01000002, 3});                                         // PROPERTY, 3 entries
  meta.Words({0x03000000, 1, 0x12000000});                             // A: string 0, "x"
  meta.Words({0x03000001, 1, 0x12000001});                             // B: string 1, "y"
  meta.Words({0x03000002, 1, 0x12000000});                             // CCC: string 0, "x"
  ASSERT_EQ(meta.size(), 304u);                                        // 19 * 16
  meta.ZerosUpTo(320).Words({0x03000000, 8}).Text("A\0B\0CCC\0"s);     // properties
  ASSERT_EQ(meta.size(), 336u);                                        // 21 * 16
  meta.ZerosUpTo(352).Words({0x04000000, 0});                          // globals
  meta.ZerosUpTo(368).Words({0x05000000, 29}).Text(kFixedValueNames);  // values
  meta.ZerosUpTo(416).Words({0x06000000, 0});                          // repeaters
  meta.ZerosUpTo(432).Words({0x11000000, 0});                          // numbers
  meta.ZerosUpTo(448).Words({0x12000000, 4}).Text("x\0y\0"s);          // strings
  meta.ZerosUpTo(464).Words({0x18000000, 2}).Terminated("0");          // groups
  meta.ZerosUpTo(480).Words({0x1A000000, 0});                          // actions
  meta.ZerosUpTo(496).Words({0x1C000000, 0});                          // table names
  meta.ZerosUpTo(512).Words({0x1B000000, 0});                          // table cells
  EXPECT_BYTES(Compile("[PROPERTY]\nA = x\nB = y\nCCC = x\n"), meta);
}

// Tables, counters and the order of the kinds are those of the process; the cells are not.
TEST_F(MetaWriteTest, ASecondCompileRunGoesOnWhereTheFirstStopped) {
  Compile("[PROPERTY]\nCOLOR = red\n[TABLE]\nNAME = T1\nTYPE = 1\n5 = 7\n");
  gccCompEnd();
  ByteString meta = MetaHeader({336, 368, 384, 432, 448, 480, 512, 528, 544, 560, 0});
  meta.Words({2});                          // count of sections
  meta.Words({0x01000002, 2});              // PROPERTY, 2 entries
  meta.Words({0x03000001, 1, 0x12000000});  // SHAPE: string 0, "red"
  meta.Words({0x03000000, 1, 0x12000002});  // COLOR: string 2, "blue"
  meta.Words({0x01000008, 2});              // TABLE, 2 entries
  meta.Words({0x02000015, 1, 0x12000003});  // NAME: string 3, "T2"
  meta.Words({0x02000002, 1, 0x11000001});  // TYPE: number 1, 2
  ASSERT_EQ(meta.size(), 324u);
  meta.ZerosUpTo(336).Words({0x03000000, 12}).Text("COLOR\0SHAPE\0"s);       // properties
  meta.ZerosUpTo(368).Words({0x04000000, 0});                                // globals
  meta.ZerosUpTo(384).Words({0x05000000, 29}).Text(kFixedValueNames);        // values
  meta.ZerosUpTo(432).Words({0x06000000, 0});                                // repeaters
  meta.ZerosUpTo(448).Words({0x11000000, 8, 1, 2});                          // numbers
  meta.ZerosUpTo(480).Words({0x12000000, 15}).Text("red\0T1\0blue\0T2\0"s);  // strings
  meta.ZerosUpTo(512).Words({0x18000000, 2}).Terminated("0");                // groups
  meta.ZerosUpTo(528).Words({0x1A000000, 0});                                // actions
  meta.ZerosUpTo(544).Words({0x1C000000, 6}).Text("T1\0T2\0"s);              // table names
  meta.ZerosUpTo(560).Words({0x1B000000, 256});                              // table cells:
  meta.Zeros(6).Text("\x08").Zeros(249);                                     //   cell 6 is 8
  EXPECT_BYTES(
      Compile("[TABLE]\nNAME = T2\nTYPE = 2\n6 = 8\n[PROPERTY]\nSHAPE = red\nCOLOR = blue\n"),
      meta);
}

const char kLostPropertyScript[] =
    "[PELMGROUP]\nNAME = E\nID = 1\nPID = 0\nSENSORS =\nP_LOST = x\n"
    "[PROPERTY]\nKEPT = y\n";

// "LOST" is a key without index: the length counts it, the payload does not have it.
TEST_F(MetaWriteTest, ThePropertyOfAPelmGroupMakesLengthAndPayloadDisagree) {
  ByteString meta = MetaHeader({336, 352, 368, 416, 432, 464, 480, 496, 512, 528, 0});
  meta.Words({2});                          // count of sections
  meta.Words({0x01000009, 4});              // PELMGROUP, 4 entries
  meta.Words({0x02000015, 1, 0x12000000});  // NAME: string 0, "E"
  meta.Words({0x02000008, 1, 0x11000000});  // ID: number 0, 1
  meta.Words({0x02000011, 1, 0x11000001});  // PID: number 1, 0
  meta.Words({0x02000016, 0});              // SENSORS: no values
  meta.Words({0x01000002, 1});              // PROPERTY, 1 entry
  meta.Words({0x03000000, 1, 0x12000001});  // KEPT: string 1, "y"
  ASSERT_EQ(meta.size(), 332u);
  meta.ZerosUpTo(336).Words({0x03000000, 10}).Terminated("KEPT");      // properties: 5 of 10
  meta.ZerosUpTo(352).Words({0x04000000, 0});                          // globals
  meta.ZerosUpTo(368).Words({0x05000000, 29}).Text(kFixedValueNames);  // values
  meta.ZerosUpTo(416).Words({0x06000000, 0});                          // repeaters
  meta.ZerosUpTo(432).Words({0x11000000, 8, 1, 0});                    // numbers
  meta.ZerosUpTo(464).Words({0x12000000, 4}).Text("E\0y\0"s);          // strings
  meta.ZerosUpTo(480).Words({0x18000000, 2}).Terminated("0");          // groups
  meta.ZerosUpTo(496).Words({0x1A000000, 0});                          // actions
  meta.ZerosUpTo(512).Words({0x1C000000, 0});                          // table names
  meta.ZerosUpTo(528).Words({0x1B000000, 0});                          // table cells
  EXPECT_BYTES(Compile(kLostPropertyScript), meta);
}

// Behind the 5 bytes of "KEPT": 3 of padding and 2 of the next block, each an empty string.
TEST_F(MetaWriteTest, ALengthBeyondThePayloadReadsOnIntoWhatFollows) {
  LoadScript(kLostPropertyScript);
  EXPECT_EQ(g_tblProperty, (Names{{"KEPT", 0x03000000}, {"", 0x03000001}}));
  EXPECT_EQ(Hex({g_idxProperty}), "0x03000006");
  EXPECT_EQ(gcGetLastError(), 0u);
}

TEST_F(MetaWriteTest, TablesKeepTheCellsOfTheTableBeforeInTheFile) {
  ByteString meta = MetaHeader({368, 384, 400, 448, 464, 480, 496, 512, 528, 544, 0});
  meta.Words({3});                          // count of sections
  meta.Words({0x01000008, 2});              // TABLE, 2 entries
  meta.Words({0x02000015, 1, 0x12000000});  // NAME: string 0, "A"
  meta.Words({0x02000002, 1, 0x11000000});  // TYPE: number 0, 1
  meta.Words({0x01000008, 2});              // TABLE, 2 entries
  meta.Words({0x02000015, 1, 0x12000001});  // NAME: string 1, "B"
  meta.Words({0x02000002, 1, 0x11000000});  // TYPE: number 0, 1
  meta.Words({0x01000008, 2});              // TABLE, 2 entries
  meta.Words({0x02000015, 1, 0x12000002});  // NAME: string 2, "C"
  meta.Words({0x02000002, 1, 0x11000000});  // TYPE: number 0, 1
  ASSERT_EQ(meta.size(), 356u);
  meta.ZerosUpTo(368).Words({0x03000000, 0});                          // properties
  meta.ZerosUpTo(384).Words({0x04000000, 0});                          // globals
  meta.ZerosUpTo(400).Words({0x05000000, 29}).Text(kFixedValueNames);  // values
  meta.ZerosUpTo(448).Words({0x06000000, 0});                          // repeaters
  meta.ZerosUpTo(464).Words({0x11000000, 4, 1});                       // numbers
  meta.ZerosUpTo(480).Words({0x12000000, 6}).Text("A\0B\0C\0"s);       // strings
  meta.ZerosUpTo(496).Words({0x18000000, 2}).Terminated("0");          // groups
  meta.ZerosUpTo(512).Words({0x1A000000, 0});                          // actions
  meta.ZerosUpTo(528).Words({0x1C000000, 6}).Text("A\0B\0C\0"s);       // table names
  meta.ZerosUpTo(544).Words({0x1B000000, 768});                        // table cells:
  meta.Text("\x01").Zeros(15).Text(std::string(16, 2)).Zeros(224);     //   A
  meta.Text("\x03").Zeros(15).Text(std::string(16, 2)).Zeros(224);     //   B sets one of them
  meta.Text("\x03").Zeros(15).Text(std::string(16, 2)).Zeros(224);     //   C none
  EXPECT_BYTES(Compile("[TABLE]\nNAME = A\nTYPE = 1\n0 = 1\n0x10.0x1F = 2\n"
                       "[TABLE]\nNAME = B\nTYPE = 1\n0 = 3\n"
                       "[TABLE]\nNAME = C\nTYPE = 1\n"),
               meta);
}

TEST_F(MetaWriteTest, TheCreationTimeIsThatOfWriting) {
  const auto before = static_cast<std::uint32_t>(std::time(nullptr));
  Compile("");
  const auto after = static_cast<std::uint32_t>(std::time(nullptr));
  tagMETAFILEINFO info{};
  ASSERT_EQ(gcInit(Path("board.meta"), &info), 1u);
  EXPECT_EQ(info.version, 0x01000000u);
  EXPECT_LE(before, info.creationTime);
  EXPECT_LE(info.creationTime, after);
}

TEST_F(MetaWriteTest, AnOlderFileIsReplaced) {
  Write("board.meta", std::string(5000, 'x'));
  EXPECT_EQ(Compile("").size(), 456u);
}

// The hole of a raised counter: an empty string in the payload that the length does not count.
TEST_F(MetaWriteTest, AStringOrdinalWithoutKeyIsAnEmptyString) {
  ++g_idxProperty;
  const std::string meta = Compile("[PROPERTY]\nA = x\nBB = x\n");
  ExpectUnsound("board.meta");  // no script leaves an index without a key
  // Sections: 4 + 8 + 2 * 12 = 36 bytes, up to 292.
  EXPECT_BYTES(meta.substr(304, 16),
               ByteString().Words({0x03000000, 5}).Zeros(1).Text("A\0BB\0"s).ZerosUpTo(16));
  ASSERT_EQ(Load(meta), 1u);
  EXPECT_EQ(g_tblProperty.at("A"), 0x03000001u);
  EXPECT_EQ(g_tblProperty.at("BB"), 0x03000002u);
}

TEST_F(MetaWriteTest, ALastStringOrdinalWithoutKeyIsWrittenButNotReadBack) {
  Compile("[PROPERTY]\nA = x\nBB = x\n");
  ++g_idxProperty;
  EXPECT_EQ(gccOutput(Path("board.meta")), 1u);
  const std::string meta = ReadAll("board.meta");
  EXPECT_BYTES(meta.substr(304, 16),
               ByteString().Words({0x03000000, 5}).Text("A\0BB\0\0"s).ZerosUpTo(16));
  ASSERT_EQ(Load(meta), 1u);
  EXPECT_EQ(g_tblProperty, (Names{{"A", 0x03000000}, {"BB", 0x03000001}}));
  EXPECT_EQ(Hex({g_idxProperty}), "0x03000002");
}

// The length counts the one number there is; so only the hole is read back.
TEST_F(MetaWriteTest, ANumberOrdinalWithoutKeyIsTheLargestNumber) {
  ++g_idxDword;
  const std::string meta = CompileAnyway("[TABLE]\nTYPE = 5\n");
  ExpectUnsound("board.meta");
  // Sections: 4 + 8 + 12 = 24 bytes, up to 280; properties 288, globals 304, values 320, repeaters
  // 368, numbers 384.
  EXPECT_BYTES(meta.substr(384, 16), ByteString().Words({0x11000000, 4, 0xFFFFFFFF, 5}));
  ASSERT_EQ(Load(meta), 1u);
  EXPECT_EQ(g_tblDword, (Numbers{{0xFFFFFFFF, 0x11000000}}));
  EXPECT_EQ(Hex({g_idxDword}), "0x11000001");
}

}  // namespace
