// What is proposed where one writes.
#include "assistance/completion.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "tests/assistance/marked.h"
#include "tests/support/temp_folder.h"

namespace {

using namespace rux::assistance;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<Proposal> ProposalsOf(const std::string& script) {
  const Marked marked(script);
  return ProposalsAt(marked.place()).proposals;
}

std::vector<std::string> LabelsOf(const std::string& script) {
  std::vector<std::string> labels;
  for (const Proposal& each : ProposalsOf(script)) labels.push_back(each.label);
  return labels;
}

// "label: text to insert".
std::vector<std::string> TextsOf(const std::string& script) {
  std::vector<std::string> texts;
  for (const Proposal& each : ProposalsOf(script)) texts.push_back(each.label + ": " + each.text);
  return texts;
}

TEST(CompletionTest, ProposesRequiredKeysThatAreMissingFirst) {
  EXPECT_THAT(LabelsOf("[GROUP]\nNAME = A\nP^\n"),
              ElementsAre("PARENT", "CHILDGROUP", "VALUE_INIT", "VALUE_DEINIT", "VALUE_ENTRY",
                          "VALUE_EXIT"));
  EXPECT_THAT(LabelsOf("[DEVICE]\nNAME = A\nID = 1\nINITFLAG = 0\nX^\n"),
              ElementsAre("CONTROLMASK", "P_...", "VALUE_..."));
  EXPECT_THAT(LabelsOf("[INCLUDE]\nF^\n"), ElementsAre("FILE"));
  EXPECT_THAT(LabelsOf("[SENSER]\nX^\n"), IsEmpty());
}

TEST(CompletionTest, KeysGetTheirEqualsSignWhereItIsMissing) {
  EXPECT_THAT(TextsOf("[MORVRUX]\nV^\n"), ElementsAre("VERSION: VERSION = "));
  EXPECT_THAT(TextsOf("[MORVRUX]\nV^ = 1\n"), ElementsAre("VERSION: VERSION"));
}

TEST(CompletionTest, ProposesSections) {
  EXPECT_EQ(LabelsOf("[^").size(), 14U);
  EXPECT_EQ(LabelsOf("[S^]\n")[0], "MORVRUX");
  EXPECT_EQ(LabelsOf("^")[0], "[MORVRUX]");
  EXPECT_EQ(TextsOf("^")[7], "[TABLE]: [TABLE]\nNAME = ${1}\nTYPE = ${2}\n$0");
}

constexpr char kMachine[] = R"([DEFINE]
VT_CONST = 1
VT_CALC = 2
VT_CALL = 3
VT_READ = 4
VT_TABLE = 10
BUSTYPE_SMBUS = 77
BUS_OTHER = 78
[GROUP]
NAME = BOARD
[TABLE]
NAME = CURVE
[ACTION]
NAME = GO
ARGNUMBER = 2
[ACTION]
NAME = STOP
[PELMGROUP]
NAME = ALL
ID = 1
[SENSOR]
NAME = CPU
ID = 0x10
[SENSOR]
NAME = FAN
ID = 17
[GLOBAL]
G_A = VT_READ, 1, 2, BUS_OTHER, 0
)";

TEST(CompletionTest, ProposesNamesByTheirRole) {
  const std::string machine = kMachine;
  EXPECT_THAT(LabelsOf(machine + "[SENSOR]\nPARENT = ^\n"), ElementsAre("BOARD"));
  EXPECT_THAT(LabelsOf(machine + "[GROUP]\nPARENT = B^\n"), ElementsAre("BOARD", "0"));
  EXPECT_THAT(LabelsOf(machine + "G_B = VT_TABLE, ^\n"), ElementsAre("CURVE"));
  EXPECT_THAT(LabelsOf(machine + "G_B = VT_CALC, ^\n")[0], "+");
  EXPECT_EQ(LabelsOf(machine + "G_B = VT_CALC, ^\n").size(), 17U);
  EXPECT_EQ(LabelsOf(machine + "G_B = VT_CONST, ^\n")[0], "G_A");
}

TEST(CompletionTest, ProposesActionsWithTheirArguments) {
  const std::string machine = kMachine;
  EXPECT_THAT(TextsOf(machine + "G_B = VT_CALL, ^\n"),
              ElementsAre("GO: GO, ${1:ARG1}, ${2:ARG2}", "STOP: STOP"));
  EXPECT_THAT(TextsOf(machine + "G_B = VT_CALL, ^, 1\n"), ElementsAre("GO: GO", "STOP: STOP"));
  EXPECT_EQ(ProposalsOf(machine + "G_B = VT_CALL, ^\n")[0].detail, "2 arguments");
}

TEST(CompletionTest, ProposesTypesWithTheirParts) {
  const std::vector<Proposal> types = ProposalsOf(std::string(kMachine) + "G_B = ^\n");
  EXPECT_EQ(types[0].label, "VT_READ");
  EXPECT_EQ(types[0].text, "VT_READ, ${1:operand}, ${2:number}, ${3:bus type}, ${4:base address}");
  EXPECT_TRUE(types[0].is_snippet);
  EXPECT_EQ(types[1].label, "VT_CONST");
  EXPECT_EQ(types[1].detail, "2 parts (type, text)");
}

TEST(CompletionTest, ProposesBusTypesBeforeOtherWords) {
  const std::vector<std::string> labels =
      LabelsOf(std::string(kMachine) + "G_B = VT_READ, 1, 2, ^\n");
  EXPECT_EQ(labels[0], "BUSTYPE_SMBUS");
  EXPECT_EQ(labels[1], "BUS_OTHER");
  EXPECT_EQ(labels[2], "VT_CONST");
}

TEST(CompletionTest, ProposesIdsWithTheirNames) {
  const std::vector<Proposal> sensors =
      ProposalsOf(std::string(kMachine) + "[PELMGROUP]\nID = 2\nSENSORS = 0x10, ^\n");
  EXPECT_EQ(sensors[0].label, "17");
  EXPECT_EQ(sensors[0].detail, "[SENSOR] FAN");
  EXPECT_EQ(sensors[1].kind, Proposal::Kind::kWord);
  EXPECT_EQ(ProposalsOf(std::string(kMachine) + "[PELMGROUP]\nID = 2\nPID = ^\n")[0].detail,
            "[PELMGROUP] ALL");
}

TEST(CompletionTest, InAnActionProposesItsValuesAndArguments) {
  const std::string script =
      std::string(kMachine) + "[ACTION]\nNAME = A\nARGNUMBER = 1\nVALUE_1 = VT_CONST, 1\n";
  std::vector<std::string> labels = LabelsOf(script + "VALUE_2 = VT_CONST, ^\n");
  labels.resize(3);
  EXPECT_THAT(labels, ElementsAre("VALUE_1", "ARG1", "G_A"));
}

TEST(CompletionTest, ReplacesWhatIsWritten) {
  const Marked marked("[GROUP]\nNAME = BOARD\n[SENSOR]\nPARENT = BO^A  # comment\n");
  EXPECT_EQ(marked.machine().TextAt(0, ProposalsAt(marked.place()).range), "BOA");
}

TEST(CompletionTest, ProposesNothingInCommentsAndTexts) {
  EXPECT_THAT(LabelsOf("[GROUP]\n# N^\n"), IsEmpty());
  EXPECT_THAT(LabelsOf("[GROUP]\nNAME = A # N^\n"), IsEmpty());
  EXPECT_THAT(LabelsOf("[GROUP]\nNAME = A^\n"), IsEmpty());
  EXPECT_THAT(LabelsOf("[SYSTEM]\nTYPE = 1, ^\n"), IsEmpty());
}

TEST(CompletionTest, ProposesFilesAndFoldersToInclude) {
  const TempFolder folder;
  folder.Write("fans.rux", "");
  folder.Write("notes.txt", "");
  folder.Write(".hidden.rux", "");
  folder.Write("parts/cpu.rux", "");
  const auto labels = [&](const std::string& written) {
    const Marked marked({{folder / "main.rux", "[INCLUDE]\nFILE = " + written}});
    std::vector<std::string> found;
    for (const Proposal& each : ProposalsAt(marked.place()).proposals) found.push_back(each.text);
    return found;
  };
  EXPECT_THAT(labels("^\n"), ElementsAre("fans.rux", "parts\\"));
  EXPECT_THAT(labels("parts\\^\n"), ElementsAre("parts\\cpu.rux"));
  EXPECT_THAT(labels("gone\\^\n"), IsEmpty());
}

}  // namespace
