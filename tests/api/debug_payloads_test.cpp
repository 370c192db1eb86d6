// The payload of an entry in a debug meta file: its bytes as a script's entry gets them, what a
// loaded entry answers for them, and what becomes of cut ones.
#include <ostream>

#include "tests/api/debug_bytes.h"

namespace {

using DebugPayloadsTest = DebugTest;

// The first entry that holds data in the first section of that kind.
GDENTRY FirstEntry(std::uint32_t section) {
  return gdGetEntryByIndex(gdGetSectByIndex(section, 0), 0);
}

std::string RepeaterPayload(const std::string& count, const std::string& action,
                            const Texts& args) {
  return Numbers({kRepeaterEntry}) + Fields({count, action}) + List(args);
}

// Values, which the script below describes as T and these parts. T is defined as the type code.
struct Value {
  std::string name;
  std::uint32_t code;
  std::string parts;  // of the description, each with the comma before it
  std::string body;   // of the record
  std::string text;   // of the loaded value
};

void PrintTo(const Value& value, std::ostream* out) { *out << value.name; }

const Value kValues[] = {
    {"Type0", 0, "", "", "T"},
    {"Type1", 1, ",5", Fields({"5"}), "T,5"},
    {"CommaInAPart", 1, ",\"a,b\"", Fields({"a,b"}), "T,a,b"},
    {"Arithmetic", 2, ",+,1,2", Fields({"+", "1", "2", "", ""}), "T,+,1,2,,"},
    {"Comparison", 2, ",==,1,2,3,4", Fields({"==", "1", "2", "3", "4"}), "T,==,1,2,3,4"},
    {"Type3", 3, ",Go,1,2", Fields({"Go"}) + List({"1", "2"}), "T,Go,1,2"},
    {"Type3WithoutArgs", 3, ",Go", Fields({"Go"}) + List({}), "T,Go"},
    {"Type4", 4, ",1,2,3,4", Fields({"1", "2", "3", "4"}), "T,1,2,3,4"},
    {"Type5", 5, ",1,2,3,4,5", Fields({"1", "2", "3", "4"}) + List({"5"}), "T,1,2,3,4,5"},
    {"Type5WithThreeArgs", 5, ",1,2,3,4,5,6,7",
     Fields({"1", "2", "3", "4"}) + List({"5", "6", "7"}), "T,1,2,3,4,5,6,7"},
    {"Type6", 6, ",1,2,3", Fields({"1", "2"}) + List({"3"}), "T,1,2,3"},
    {"Type6WithoutArgs", 6, ",1,2", Fields({"1", "2"}) + List({}), "T,1,2"},
    {"Type7", 7, ",1,2,3,4", List({"1", "2", "3", "4"}), "T,1,2,3,4"},
    {"Type7WithoutArgs", 7, "", List({}), "T"},
    {"Type7OfFiveArgs", 7, ",1,2,3,4,5", List({"1", "2", "3", "4"}), "T,1,2,3,4"},
    {"Type8", 8, ",1,2,3,4", Fields({"1", "2", "3", "4"}), "T,1,2,3,4"},
    {"Type9", 9, ",1,2,3,4,5", Fields({"1", "2", "3", "4"}) + List({"5"}), "T,1,2,3,4,5"},
    {"Type10", 10, ",FAN,2", Fields({"FAN", "2"}), "T,FAN,2"},
    {"Type11", 11, ",1,2,3,4,5", Fields({"1", "2", "3", "4"}) + List({"5"}), "T,1,2,3,4,5"},
    {"Type12", 12, ",1,2,3,4", Fields({"1", "2", "3", "4"}), "T,1,2,3,4"},
    {"Type13", 13, ",a,b", "", ""},
    {"Type100", 100, ",a,b", "", ""},
    {"Type101", 101, ",5", Fields({"5"}), "T,5"},
    {"Type102", 102, ",1,Go,3", Fields({"1", "Go"}) + List({"3"}), "T,1,Go,3"},
    {"Type102WithoutArgs", 102, ",1,Go", Fields({"1", "Go"}) + List({}), "T,1,Go"},
    {"Type103", 103, ",5", Fields({"5"}), "T,5"},
    {"Type104", 104, ",VALUE_1", Fields({"VALUE_1"}), "T,VALUE_1"},
    {"Type105", 105, ",a,b", "", ""},
    {"HighestType", 0xFFFFFFFF, "", "", ""},
};

class WrittenValueTest : public DebugTest, public testing::WithParamInterface<Value> {};

TEST_P(WrittenValueTest, IsItsTypeTheNameOfTheTypeAndItsParts) {
  const Value& value = GetParam();
  const std::string code = std::to_string(static_cast<std::int32_t>(value.code));
  EXPECT_SAME_BYTES(
      CompileD("[DEFINE]\nT = " + code + "\n[GLOBAL]\nG_A = T" + value.parts + "\n"),
      DebugMeta(
          {{"T", value.code}},
          {{Section(Object(kDefineSection, 2, 1, 0, "DEFINE") + BoardOnly(),
                    {Entry(Object(kWordEntry, 10, 2, 0, "T"), Numbers({kWordEntry, value.code}))})},
           {Section(Object(kGlobalSection, 2, 3, 0, "GLOBAL"),
                    {Entry(Object(kGlobalEntry, 46, 4, 0, "G_A"),
                           ValuePayload(kGlobalEntry, value.code, "T", value.body))})}}));
}

INSTANTIATE_TEST_SUITE_P(EveryType, WrittenValueTest, testing::ValuesIn(kValues),
                         [](const auto& row) { return row.param.name; });

// Payloads of every class, as a file may hold them.
struct Payload {
  std::string name;
  std::uint32_t identifier;
  std::string bytes;
  std::string text;
};

void PrintTo(const Payload& payload, std::ostream* out) { *out << payload.name; }

std::vector<Payload> Payloads() {
  const std::uint32_t string = kPropertyEntry, list = kSensorsEntry;
  std::vector<Payload> payloads = {
      {"Dword", kWordEntry, Numbers({kWordEntry, 255}), "0xff"},
      {"DwordZero", kWordEntry, Numbers({kWordEntry, 0}), "0x0"},
      {"DwordOfEightDigits", kWordEntry, Numbers({kWordEntry, 0xABCDEF01}), "0xabcdef01"},
      {"String", string, StringPayload(string, "CPU 0, \"core\""), "CPU 0, \"core\""},
      {"StringEmpty", string, StringPayload(string, ""), ""},
      {"StringLong", string, StringPayload(string, std::string(70000, 'x')),
       std::string(70000, 'x')},
      {"StringList", list, Numbers({list}) + List({"1", "", "0x3"}), "1,,0x3"},
      {"StringListOfOne", list, Numbers({list}) + List({"1"}), "1"},
      {"StringListEmpty", list, Numbers({list}) + List({}), ""},
      {"Repeater", kRepeaterEntry, RepeaterPayload("3", "Go", {"1", "G_X"}), "3,Go,1,G_X"},
      {"RepeaterWithoutArgs", kRepeaterEntry, RepeaterPayload("3", "Go", {}), "3,Go"},
      {"RepeaterEmpty", kRepeaterEntry, RepeaterPayload("", "", {}), ","},
      {"Type7OfSixElements", kValueEntry,
       ValuePayload(kValueEntry, 7, "T", List({"1", "2", "3", "4", "5", "6"})), "T,1,2,3,4,5,6"},
      {"ValueUnread", kValueEntry, ValuePayload(kValueEntry, 0, "", ""), ""},
      // The payload itself says which class it has.
      {"NumberInAStringEntry", string, Numbers({kWordEntry, 255}), "0xff"},
  };
  for (const Value& value : kValues) {
    payloads.push_back({"Value" + value.name, kValueEntry,
                        ValuePayload(kValueEntry, value.code, "T", value.body), value.text});
  }
  return payloads;
}

class LoadedPayloadTest : public DebugTest, public testing::WithParamInterface<Payload> {};

TEST_P(LoadedPayloadTest, AnswersItsTextAndIsWrittenAsItWas) {
  const std::string file = OneEntry(GetParam().identifier, GetParam().bytes);
  ASSERT_EQ(Load(file), "1");
  EXPECT_EQ(gdGetValue(FirstEntry(RUX_SECT_PROPERTY)), GetParam().text);
  EXPECT_SAME_BYTES(OutputD(), file);
}

TEST_P(LoadedPayloadTest, IgnoresWhatFollowsIt) {
  ASSERT_EQ(Load(OneEntry(GetParam().identifier, GetParam().bytes + "more")), "1");
  EXPECT_SAME_BYTES(OutputD(), OneEntry(GetParam().identifier, GetParam().bytes));
}

TEST_P(LoadedPayloadTest, RaisesWhenItIsCutAnywhere) {
  const std::string& bytes = GetParam().bytes;
  for (std::size_t length = bytes.size() > 100 ? bytes.size() - 1 : 0; length < bytes.size();
       ++length) {
    SCOPED_TRACE(length);
    InOwnProcess([&] {
      EXPECT_EQ(Load(OneEntry(GetParam().identifier, bytes.substr(0, length))), "vector");
    });
  }
}

INSTANTIATE_TEST_SUITE_P(EveryClass, LoadedPayloadTest, testing::ValuesIn(Payloads()),
                         [](const auto& row) { return row.param.name; });

TEST_F(DebugPayloadsTest, ValueThatNamesAFanByteByByte) {
  const std::string payload = ByteString()
                                  .Words({0x10080000, 0x15})
                                  .Text(std::string("\x0A\0\0\0\1\0\0\0T\3\0\0\0FAN\1\0\0\0", 20))
                                  .Text("2")
                                  .str();
  ASSERT_EQ(payload.size(), 4u + 4u + 21u);
  EXPECT_SAME_BYTES(ValuePayload(kValueEntry, 10, "T", Fields({"FAN", "2"})), payload);

  const std::string file = CompileD("[DEFINE]\nT = 10\n[ACTION]\nNAME = a\nVALUE = T,FAN,2\n");
  const std::string entry = Entry(Object(kValueEntry, 38, 5, 0, "VALUE"), payload);
  EXPECT_SAME_BYTES(file.substr(file.size() - entry.size()), entry);
}

TEST_F(DebugPayloadsTest, DwordTakesEightBytesAlsoWhenItsTextMeansNothing) {
  const auto word = [](const char* name, std::uint32_t line, std::uint32_t value) {
    const std::string payload = Numbers({0x10010001, value});
    EXPECT_EQ(payload.size(), 8u);
    return Entry(Object(kWordEntry, 10, line, 0, name), payload);
  };
  EXPECT_SAME_BYTES(CompileD("[DEFINE]\nA = 0x10\nB = -1\nC = abc\nD = 12345678901\n"),
                    DebugMeta({{"A", 16}, {"B", 0xFFFFFFFF}, {"C", 0}, {"D", 0}},
                              {{Section(Object(kDefineSection, 2, 1, 0, "DEFINE") + BoardOnly(),
                                        {word("A", 2, 16), word("B", 3, 0xFFFFFFFF),
                                         word("C", 4, 0), word("D", 5, 0)})}}));
}

TEST_F(DebugPayloadsTest, StringIsTheFirstPartOfItsText) {
  const auto entry = [](const char* name, std::uint32_t line, const char* text) {
    return Entry(Object(kPropertyEntry, 10, line, 0, name), StringPayload(kPropertyEntry, text));
  };
  EXPECT_SAME_BYTES(
      CompileD("[PROPERTY]\nA = \"x, y\"\nB = first,second\nC =\n"),
      DebugMeta({},
                {{Section(Object(kPropertySection, 2, 1, 0, "PROPERTY") + BoardOnly(),
                          {entry("A", 2, "x, y"), entry("B", 3, "first"), entry("C", 4, "")})}}));
}

TEST_F(DebugPayloadsTest, StringListIsEveryPartOfItsText) {
  const auto section = [](std::uint32_t line, const std::string& list, const Texts& sensors) {
    return Section(Object(0x20000009, 1, line, 0, "PELMGROUP") + list,
                   {Template(kNameEntry, 1), Template(kIdEntry, 1), Template(0x10028011, 1),
                    Entry(Object(kSensorsEntry, 1, line + 1, 0, "SENSORS"),
                          Numbers({kSensorsEntry}) + List(sensors))});
  };
  EXPECT_SAME_BYTES(
      CompileD("[PELMGROUP]\nSENSORS = 1,,0x3,\n[PELMGROUP]\nSENSORS =\n"),
      DebugMeta({}, {{section(1, BoardOnly(), {"1", "", "0x3", ""}), section(3, "", {})}}));
}

TEST_F(DebugPayloadsTest, RepeaterIsItsCountItsActionAndTheList) {
  const auto entry = [](const char* name, std::uint32_t line, const std::string& payload) {
    return Entry(Object(kRepeaterEntry, 10, line, 0, name), payload);
  };
  EXPECT_SAME_BYTES(
      CompileD("[REPEATER]\nA = 3,Go,1,2\nB = 3,Go\nC = 3\n"),
      DebugMeta({}, {{Section(Object(kRepeaterSection, 2, 1, 0, "REPEATER") + BoardOnly(),
                              {entry("A", 2, RepeaterPayload("3", "Go", {"1", "2"})),
                               entry("B", 3, RepeaterPayload("3", "Go", {})),
                               entry("C", 4, RepeaterPayload("", "", {}))})}}));
}

// Before the check only defined words have a value.
TEST_F(DebugPayloadsTest, UncheckedEntriesAreEmpty) {
  Parse("[PROPERTY]\nA = x\n[GLOBAL]\nG_A = T,1\n[REPEATER]\nR = 3,Go\n[DEFINE]\nD = 7\n");
  const std::string string = Numbers({kPropertyEntry, 0});
  EXPECT_EQ(string.size(), 8u);
  EXPECT_SAME_BYTES(
      OutputD(),
      DebugMeta(
          {{"D", 7}},
          {{Section(Object(kPropertySection, 2, 1, 0, "PROPERTY") + BoardOnly(),
                    {Entry(Object(kPropertyEntry, 10, 2, 0, "A"), string)})},
           {Section(
               Object(kGlobalSection, 2, 3, 0, "GLOBAL"),
               {Entry(Object(kGlobalEntry, 46, 4, 0, "G_A"), Numbers({kGlobalEntry, 8, 0, 0}))})},
           {Section(
               Object(kRepeaterSection, 2, 5, 0, "REPEATER"),
               {Entry(Object(kRepeaterEntry, 10, 6, 0, "R"), Numbers({kRepeaterEntry, 0, 0, 0}))})},
           {Section(Object(kDefineSection, 2, 7, 0, "DEFINE"),
                    {Entry(Object(kWordEntry, 10, 8, 0, "D"), Numbers({kWordEntry, 7}))})}}));
}

TEST_F(DebugPayloadsTest, UnknownClassHoldsNoDataAndIsWrittenAsItsTypeAlone) {
  for (const std::uint32_t type : {0x10200000u, 0x10000001u, 0x10030001u, 0x20020001u, 0u}) {
    SCOPED_TRACE(type);
    InOwnProcess([&] {
      ASSERT_EQ(Load(OneEntry(kPropertyEntry, Numbers({type, 1, 2}))), "1");
      EXPECT_EQ(FirstEntry(RUX_SECT_PROPERTY), nullptr);
      EXPECT_SAME_BYTES(OutputD(), OneEntry(kPropertyEntry, Numbers({type})));
    });
  }
}

TEST_F(DebugPayloadsTest, ValueIgnoresWhatFollowsItsRecord) {
  const auto file = [](const std::string& body) {
    return OneEntry(kValueEntry, ValuePayload(kValueEntry, 1, "T", body));
  };
  ASSERT_EQ(Load(file(Fields({"5", "6"}))), "1");
  EXPECT_SAME_BYTES(OutputD(), file(Fields({"5"})));
}

// The payload is as long as ever, the value record in it is not.
TEST_F(DebugPayloadsTest, ValueRaisesWhenItsOwnLengthCutsIt) {
  for (const Value& value : kValues) {
    SCOPED_TRACE(value.name);
    const std::string record = Numbers({value.code}) + Counted("T") + value.body;
    InOwnProcess([&] {
      const std::string cut =
          Numbers({kValueEntry, static_cast<std::uint32_t>(record.size() - 1)}) + record;
      EXPECT_EQ(Load(OneEntry(kValueEntry, cut)), "vector");
    });
  }
}

// Counts are believed until the bytes run out.
TEST_F(DebugPayloadsTest, HugeCountsRaise) {
  const Texts payloads = {
      Numbers({kPropertyEntry, 0xFFFFFFFF}),    Numbers({kSensorsEntry, 0xFFFFFFFF}),
      Numbers({kSensorsEntry, 1, 0x7FFFFFFF}),  Numbers({kValueEntry, 0xFFFFFFFF, 0, 0}),
      Numbers({kValueEntry, 8, 0, 0xFFFFFFFF}), Numbers({kRepeaterEntry, 0, 0, 0xFFFFFFFF})};
  for (const std::string& payload : payloads) {
    SCOPED_TRACE(HexDump(payload));
    InOwnProcess([&] { EXPECT_EQ(Load(OneEntry(kPropertyEntry, payload)), "vector"); });
  }
}

}  // namespace
