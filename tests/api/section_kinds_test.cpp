// The section kinds: which keys each takes, and what becomes of all others. Entries without a text
// show what they are: each payload type has a complaint of its own.
#include <algorithm>

#include "tests/support/host.h"
#include "tests/support/script_test.h"
#include "tests/unit/section_templates.h"

namespace {

std::string Complaint(const std::string& section, std::size_t line, const std::string& complaint) {
  return "Error[board.rux:" + std::to_string(line) + "]: [" + section + "]:" + complaint + "\n";
}

// What is reported about an entry without a text; empty for lists, which may be empty.
std::string EmptyComplaint(const TemplateRow& row) {
  switch (row.identifier & 0xFFFF0000) {
    case 0x10020000:
      return row.key + std::string(", No sub-string.");
    case 0x10080000:
      return row.key + std::string(", No value type sub-string.");
    default:
      return "";
  }
}

class KindTest : public ScriptTest, public ::testing::WithParamInterface<KindRow> {
 protected:
  const std::string keyword = GetParam().keyword;
  const std::vector<TemplateRow>& templates = GetParam().templates;
};

TEST_P(KindTest, MissingRequiredEntriesAreToldInTemplateOrder) {
  Lines expected;
  for (const TemplateRow& row : templates) {
    if (row.required()) {
      expected.push_back(
          Complaint(keyword, 0, std::string(row.key) + ", This ENTRY does not exist."));
    }
  }
  EXPECT_EQ(Check("[" + keyword + "]\n", expected.empty() ? 1 : 0), expected);
}

TEST_P(KindTest, EveryTemplateTakesItsKeyAndKeepsItsPlace) {
  std::string script = "[" + keyword + "]\n";
  for (auto row = templates.rbegin(); row != templates.rend(); ++row) {
    script += row->key + std::string("\n");
  }
  Lines expected;
  for (std::size_t i = 0; i < templates.size(); ++i) {
    const std::string complaint = EmptyComplaint(templates[i]);
    // The last template is in line 2, the first in the last line.
    if (!complaint.empty()) {
      expected.push_back(Complaint(keyword, templates.size() + 1 - i, complaint));
    }
  }
  Parse(script);
  EXPECT_EQ(gccCheck(), expected.empty() ? 1u : 0u);
  EXPECT_EQ(host::TakeMessages(), expected);
}

class RepeatTest : public KindTest {};

TEST_P(RepeatTest, IsAnEntryOfTheSameTypeBehindTheTemplates) {
  std::string script = "[" + keyword + "]\n";
  Lines expected;
  std::size_t line = 1;
  for (int round = 0; round < 2; ++round) {
    for (const TemplateRow& row : templates) {
      script += row.key + std::string("\n");
      ++line;
      const std::string complaint = EmptyComplaint(row);
      if (!complaint.empty()) expected.push_back(Complaint(keyword, line, complaint));
    }
  }
  Parse(script);
  EXPECT_EQ(gccCheck(), expected.empty() ? 1u : 0u);
  EXPECT_EQ(host::TakeMessages(), expected);
}

std::string NameOf(const ::testing::TestParamInfo<KindRow>& kind) { return kind.param.keyword; }

INSTANTIATE_TEST_SUITE_P(, KindTest, ::testing::ValuesIn(KindRows()), NameOf);

// What follows the condition of an IFDEF section are definitions, whatever their keys.
std::vector<KindRow> KindsWithRepeats() {
  std::vector<KindRow> kinds;
  std::copy_if(KindRows().begin(), KindRows().end(), std::back_inserter(kinds),
               [](const KindRow& kind) {
                 return !kind.templates.empty() && kind.keyword != std::string("IFDEF");
               });
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(, RepeatTest, ::testing::ValuesIn(KindsWithRepeats()), NameOf);

struct OtherKey {
  const char* section;
  const char* key;
  const char* complaint;
};

void PrintTo(const OtherKey& row, std::ostream* out) { *out << row.section << ':' << row.key; }

// The complaints about such items alone, without those about missing entries.
class OtherKeyTest : public ScriptTest, public ::testing::WithParamInterface<OtherKey> {};

TEST_P(OtherKeyTest, IsTakenAsTheKindSays) {
  const OtherKey& row = GetParam();
  const std::string section = row.section;
  EXPECT_EQ(Parse("[" + section + "]\n" + row.key + "\n"),
            Lines{"Parse::No more sections(total = 1).\n"});
  EXPECT_EQ(gccCheck(), 0u);
  Lines messages = host::TakeMessages();
  messages.erase(std::remove_if(messages.begin(), messages.end(),
                                [](const std::string& message) {
                                  return message.find("[board.rux:0]") != std::string::npos;
                                }),
                 messages.end());
  EXPECT_EQ(messages, Lines{Complaint(section, 2, row.key + std::string(", ") + row.complaint)});
}

constexpr char kString[] = "No sub-string.";
constexpr char kValue[] = "No value type sub-string.";
constexpr char kBadName[] = "Entry name is invalid.";

const OtherKey kOtherKeys[] = {
    // Properties, whatever they are called.
    {"SYSTEM", "P_X", kString},
    {"SYSTEM", "X", kBadName},
    {"SYSTEM", "p_X", kBadName},
    {"SYSTEM", "NAME", kBadName},
    {"SYSTEM", "VALUE_1", kBadName},
    {"PELMGROUP", "P_X", kString},
    {"PELMGROUP", "X", kBadName},
    {"PELMGROUP", "PARENT", kBadName},
    // Properties by their prefix, values else.
    {"SENSOR", "P_X", kString},
    {"SENSOR", "VALUE_1", kValue},
    {"SENSOR", "VALUE_X", kValue},
    {"SENSOR", "X", kBadName},
    {"SENSOR", "p_X", kBadName},
    {"SENSOR", "P", kBadName},
    {"SENSOR", "G_X", kBadName},
    {"SENSOR", "VERSION", kBadName},
    {"DEVICE", "P_X", kString},
    {"DEVICE", "VALUE_1", kValue},
    {"DEVICE", "VALUE_INIT", kValue},
    {"DEVICE", "X", kBadName},
    {"DEVICE", "VALUE", kBadName},
    // Values, numbered.
    {"ACTION", "VALUE_1", kValue},
    {"ACTION", "VALUE_0x1F", kValue},
    {"ACTION", "VALUE_X", kBadName},
    {"ACTION", "VALUE_INIT", kBadName},
    {"ACTION", "P_X", kBadName},
    {"ACTION", "X", kBadName},
    // Table rows.
    {"TABLE", "5", kString},
    {"TABLE", "3.7", kString},
    {"TABLE", "7.3", kBadName},
    {"TABLE", "X", kBadName},
    {"TABLE", "VALUE", kBadName},
    // No templates at all.
    {"GLOBAL", "G_X", kValue},
    {"GLOBAL", "G_NAME", kValue},
    {"GLOBAL", "NAME", kBadName},
    {"GLOBAL", "VALUE", kBadName},
    {"PROPERTY", "X", kString},
    {"PROPERTY", "NAME", kString},
    {"PROPERTY", "VALUE", kString},
    {"PROPERTY", "3X", kBadName},
    {"REPEATER", "X", kString},
    {"REPEATER", "NAME", kString},
    {"REPEATER", "3X", kBadName},
};

INSTANTIATE_TEST_SUITE_P(, OtherKeyTest, ::testing::ValuesIn(kOtherKeys));

using SectionKindsTest = ScriptTest;

TEST_F(SectionKindsTest, MorvruxAndGroupRejectEveryOtherKey) {
  for (const std::string section : {"MORVRUX", "GROUP"}) {
    for (const std::string key : {"X", "P_X", "G_X", "VALUE_1", "VALUE", "ID", "5"}) {
      SCOPED_TRACE(section + " " + key);
      EXPECT_EQ(Parse("[" + section + "]\n" + key + " = 1\n"),
                (Lines{"Add Item(NO. = 1) of section(" + section + ") failed.\n",
                       "Warning[board.rux:2]: [" + section + "]:" + key +
                           ", This ENTRY is ignored because of invalid entry name.\n",
                       "Parse::No more sections(total = 1).\n"}));
      gccCompEnd();
    }
  }
}

TEST_F(SectionKindsTest, RepeatsAndFreeEntriesStandBehindTheTemplatesInScriptOrder) {
  EXPECT_EQ(Check("[DEVICE]\n"
                  "P_A\n"
                  "CONTROLMASK\n"
                  "ID\n"
                  "ID\n"
                  "VALUE_1\n"
                  "INITFLAG\n"
                  "NAME\n"
                  "NAME\n",
                  0),
            (Lines{Complaint("DEVICE", 8, "NAME, No sub-string."),
                   Complaint("DEVICE", 4, "ID, No sub-string."),
                   Complaint("DEVICE", 7, "INITFLAG, No sub-string."),
                   Complaint("DEVICE", 3, "CONTROLMASK, No sub-string."),
                   Complaint("DEVICE", 2, "P_A, No sub-string."),
                   Complaint("DEVICE", 5, "ID, No sub-string."),
                   Complaint("DEVICE", 6, "VALUE_1, No value type sub-string."),
                   Complaint("DEVICE", 9, "NAME, No sub-string.")}));
}

TEST_F(SectionKindsTest, RepeatIsARedefinition) {
  EXPECT_EQ(Check("[DEVICE]\nNAME = a\nID = 1\nINITFLAG = 0\nCONTROLMASK = 0\nNAME = b\n", 0),
            Lines{"Error[board.rux:6]: [DEVICE], Entry NAME is redefined.\n"});
}

// The text of an item is split where it is read; what the parts were shows in the checks.
TEST_F(SectionKindsTest, QuotedCommaDoesNotSplitAText) {
  EXPECT_EQ(Check("[PROPERTY]\nA = \"x, y\"\nB = x,y\nC = x \"a,b\" y\nD = \"x,y\nE = x,\n", 1),
            (Lines{"Warning[board.rux:3]: [PROPERTY]:B, More than one sub-string and get the first "
                   "one as sub-string.\n",
                   "Warning[board.rux:6]: [PROPERTY]:E, More than one sub-string and get the first "
                   "one as sub-string.\n"}));
}

}  // namespace
