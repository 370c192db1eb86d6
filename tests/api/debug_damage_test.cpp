// What gdInit makes of damaged files: cut ones, and those with a wrong count or length. What was
// loaded shows when it is written again.
#include <utility>

#include "tests/api/debug_bytes.h"
#include "tests/api/debug_walk.h"

namespace {

// One defined word and one section of one entry, every byte of it at a known place.
std::string Small(const Texts& entries = {PropertyText("A", "x")}) {
  return DebugMeta({{"W", 7}}, {{PropertyRecord(List({"f"}), entries)}});
}

class DamagedFileTest : public DebugTest {
 protected:
  // What loading must come to: the bytes that writing gives then, or "vector".
  void ExpectOutcome(const std::string& bytes, const std::string& outcome) {
    InOwnProcess([&] {
      if (outcome == "vector") {
        EXPECT_EQ(Load(bytes), outcome);
      } else {
        EXPECT_EQ(Load(bytes), "1");
        EXPECT_SAME_BYTES(OutputD(), outcome);
      }
    });
  }
};

TEST_F(DamagedFileTest, FileReadsAsZerosFromTheCutOn) {
  ASSERT_EQ(Small().size(), 240u);
  const auto words = [](const DefinedWords& left) { return DebugMeta(left, {}); };
  const auto section = [](const std::string& object, const Texts& entries) {
    return DebugMeta({{"W", 7}}, {{Section(object, entries)}});
  };
  const auto object = [](std::uint32_t notation, std::uint32_t line, const std::string& name) {
    return Object(kPropertySection, notation, line, 0, name);
  };
  const auto entry = [](const std::string& payload) {
    return Small({Entry(Object(kPropertyEntry, 10, 4, 0, "A"), payload)});
  };
  const std::string none = List({});
  const std::pair<std::size_t, std::string> rows[] = {
      {128, words({})},                                               // count of words
      {132, words({{"", 0}})},                                        // length of the name
      {136, words({{std::string(1, '\0'), 0}})},                      // name
      {137, words({{"W", 0}})},                                       // value
      {141, words({{"W", 7}})},                                       // count of kinds
      {145, words({{"W", 7}})},                                       // count of sections
      {149, "vector"},                                                // section: length
      {153, words({{"W", 7}})},                                       // length of the object
      {157, words({{"W", 7}})},                                       // identifier
      {160, words({{"W", 7}})},                                       // its last byte
      {161, section(object(0, 0, "") + none, {})},                    // notation
      {165, section(object(2, 0, "") + none, {})},                    // line
      {169, section(object(2, 3, "") + none, {})},                    // file
      {173, section(object(2, 3, "") + none, {})},                    // length of the name
      {177, section(object(2, 3, std::string(8, '\0')) + none, {})},  // name
      {181, section(object(2, 3, std::string("PROP\0\0\0\0", 8)) + none, {})},
      {185, section(object(2, 3, "PROPERTY") + none, {})},        // count of files
      {189, section(object(2, 3, "PROPERTY") + List({""}), {})},  // length of the path
      {193, section(object(2, 3, "PROPERTY") + List({std::string(1, '\0')}), {})},  // path
      {194, Small({})},            // count of entries
      {198, "vector"},             // entry: length
      {202, Small({})},            // length of the object
      {206, Small({})},            // identifier
      {210, "vector"},             // there is no payload
      {227, "vector"},             // length of the payload
      {231, entry(Numbers({0}))},  // its type
      {233, entry(Numbers({0x17}))},
      {234, entry(Numbers({0x00020017}))},
      {235, Small({PropertyText("A", "")})},                    // length of the text
      {239, Small({PropertyText("A", std::string(1, '\0'))})},  // text
      {240, Small()},
  };
  for (const auto& [length, outcome] : rows) {
    SCOPED_TRACE(length);
    ExpectOutcome(Small().substr(0, length), outcome);
  }
}

TEST_F(DamagedFileTest, WrongCountOrLengthRaisesOrTakesLess) {
  const std::string same = Small();
  const std::string nothing = DebugMeta({{"W", 7}}, {});
  const auto files = [](const Texts& paths) {
    return DebugMeta({{"W", 7}}, {{PropertyRecord(List(paths), {PropertyText("A", "x")})}});
  };
  const struct {
    std::size_t offset;
    std::uint32_t number;
    std::string outcome;
  } rows[] = {
      {128, 0, "vector"},   // words: the word is read as kinds
      {128, 2, "vector"},   // the kinds are read as a word
      {132, 0, "vector"},   // the word's name
      {141, 0, nothing},    // kinds
      {141, 2, same},       // the second one has no sections
      {145, 0, nothing},    // sections
      {145, 2, "vector"},   // the second one has no bytes
      {149, 0, "vector"},   // section
      {149, 86, "vector"},  // its last byte is missing
      {149, 88, same},      // takes a zero from past the end
      {153, 0, "vector"},   // its object
      {153, 36, "vector"},  // the last byte of the path is missing
      {153, 38, "vector"},  // takes a byte of the count of entries, which gets huge
      {153, 0xFFFFFFFF, "vector"},
      {173, 0, "vector"},  // its name
      {173, 7, "vector"},  // the rest of the name makes a huge count of files
      {173, 9, "vector"},
      {173, 0xFFFFFFFF, "vector"},
      {185, 0, files({})},  // source files
      {185, 2, "vector"},
      {189, 0, files({""})},  // the path
      {189, 2, "vector"},
      {194, 0, Small({})},  // entries
      {194, 2, "vector"},
      {198, 0, "vector"},  // entry
      {198, 37, "vector"},
      {198, 39, "vector"},
      {202, 0, "vector"},   // its object
      {202, 20, "vector"},  // the name is missing
      {202, 22, "vector"},  // takes a byte of the length of the payload, which gets huge
      {222, 0, Small({PropertyText("", "x")})},  // its name
      {222, 2, "vector"},
      {227, 0, "vector"},  // its payload
      {227, 8, "vector"},
      {227, 10, "vector"},
      {235, 0, Small({PropertyText("A", "")})},  // its text
      {235, 2, "vector"},
      {235, 0xFFFFFFFF, "vector"},
  };
  ASSERT_EQ(Small().size(), 240u);
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.offset) + ": " + std::to_string(row.number));
    ExpectOutcome(WithNumber(Small(), row.offset, row.number), row.outcome);
  }
}

// Payloads of every class; templates; sections and entries that are dropped.
std::string Large() {
  const auto entry = [](const std::string& name, const std::string& payload, std::uint32_t id) {
    return Entry(Object(id, 10, 4, 1, name), payload);
  };
  const std::string list = Numbers({kSensorsEntry}) + List({"0x10", "", "12"});
  const std::string repeater = Numbers({kRepeaterEntry}) + Fields({"3", "Go"}) + List({"1", "2"});
  const std::string bus =
      ValuePayload(kGlobalEntry, 5, "T5", Fields({"1", "0x10", "BUS", "0"}) + List({"7", "8"}));
  return DebugMeta(
      {{"A", 1}, {"FAN_COUNT", 0x12345678}},
      {{Section(Object(0x20000001, 1, 1, 0, "MORVRUX") + List({"board.rux", "fans.rux"}),
                {Entry(Object(0x10020001, 1, 2, 0, "VERSION"), StringPayload(0x10020001, "1.0"))})},
       {PropertyRecord("", {PropertyText("A", "x"), PropertyText("BC", "")}),
        PropertyRecord("", {})},
       {Section(Object(kIncludeSection, 2, 9, 0, "INCLUDE"),
                {Entry(Object(kFileEntry, 2, 10, 0, "FILE"), StringPayload(kFileEntry, "f"))})},
       {},
       {Section(
           Object(kGlobalSection, 2, 3, 1, "GLOBAL"),
           {entry("W", Numbers({kWordEntry, 7}), kWordEntry),  //
            entry("S", list, kSensorsEntry), entry("R", repeater, kRepeaterEntry),
            entry("G_5", bus, kGlobalEntry),
            entry("G_10", ValuePayload(kGlobalEntry, 10, "T", Fields({"FAN", "2"})), kGlobalEntry),
            entry("G_50", ValuePayload(kGlobalEntry, 50, "T", ""), kGlobalEntry),
            entry("?", "unread", 0x10200000), entry("N", Numbers({0}), kNameEntry)})},
       {Section(Object(kActionSection, 2, 3, 0, "ACTION"),
                {Template(kNameEntry, 1), Template(kValueEntry, 38)})}});
}

TEST_F(DamagedFileTest, EveryCutLeadsWhereItsLengthsLead) {
  const std::string file = Large();
  EXPECT_EQ(DebugWalk::Outcome(file), "1");
  for (std::size_t length = 128; length <= file.size(); ++length) {
    SCOPED_TRACE(length);
    const std::string cut = file.substr(0, length);
    InOwnProcess([&] {
      EXPECT_EQ(Load(cut), DebugWalk::Outcome(cut));
      EXPECT_EQ(host::TakeMessages(), Lines{});
    });
  }
}

// The same file, full of zeros where the cut one ends.
TEST_F(DamagedFileTest, EveryCutFileLoadsWhatTheZeroedOneLoads) {
  const std::string file = Large();
  for (std::size_t length = 128; length < file.size(); ++length) {
    const std::string cut = file.substr(0, length);
    if (DebugWalk::Outcome(cut) == "vector") continue;
    SCOPED_TRACE(length);
    std::string zeroed = cut;
    zeroed.resize(file.size());
    for (const auto& [bytes, name] : {std::pair(cut, "cut"), std::pair(zeroed, "zeroed")}) {
      InOwnProcess([&, &bytes = bytes, &name = name] {
        EXPECT_EQ(Load(bytes), "1");
        Write(name, OutputD());
      });
    }
    EXPECT_SAME_BYTES(ReadAll("cut"), ReadAll("zeroed"));
  }
}

TEST_F(DamagedFileTest, EveryWrongCountOrLengthLeadsWhereItMust) {
  const std::string file = Large();
  int whole = 0, raised = 0;
  for (const auto& [offset, right] : DebugWalk::OverFile(file)) {
    for (const std::uint32_t wrong : {0u, right > 0 ? right - 1 : 2, right + 1}) {
      SCOPED_TRACE(std::to_string(offset) + ": " + std::to_string(wrong));
      const std::string damaged = WithNumber(file, offset, wrong);
      const std::string outcome = DebugWalk::Outcome(damaged);
      ++(outcome == "1" ? whole : raised);
      InOwnProcess([&] { EXPECT_EQ(Load(damaged), outcome); });
    }
  }
  // The file is rich enough: both outcomes come up.
  EXPECT_GT(whole, 20);
  EXPECT_GT(raised, 100);
}

}  // namespace
