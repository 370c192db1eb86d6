// What a table says of one machine, another one becomes: a table in CSV that is applied to a script
// and printed again is the same, and all else in the script stays as it was.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "machine/load.h"
#include "machine/machine.h"
#include "reader/texts.h"
#include "reconcile/adopt.h"
#include "reconcile/compare.h"
#include "reconcile/listing.h"
#include "ruxcomp/language/sections.h"
#include "settings/project.h"
#include "support/text_stream.h"
#include "table/columns.h"
#include "table/forms.h"
#include "table/machine_table.h"

namespace {

using rux::machine::Machine;

constexpr char kLimits[] =
    R"({"limits": [
  {"type": 1, "unit": "C", "sign": "signed"},
  {"type": 2, "unit": "V", "divisor": 1000, "sign": "unsigned"},
  {"type": 3, "unit": "A", "divisor": 7, "sign": "signed"},
  {"type": 4, "unit": "W", "divisor": 4294967295}]})";

constexpr std::size_t kSensors = 12;

class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  // A script with comments, and with what it is indented and aligned by.
  std::string Script() {
    std::ostringstream text;
    text << "[MORVRUX]\nVERSION = 1\n[DEFINE]\nTEXT = 1\nLIMIT = 77\n"
            "[SYSTEM]\nTYPE = 1\nMODEL = M\nFLAG = 0\nRUXLOOP = 1\n"
            "[GROUP]\nPARENT = 0\nNAME = A\nCHILDGROUP = 1\n"
            "[GROUP]\nPARENT = A\nNAME = \"B, C\"\nCHILDGROUP = 0\n"
            "[PELMGROUP]\nNAME = ALL\nID = 1\nPID = 0\nSENSORS = 100";
    for (std::size_t i = 1; i < kSensors; ++i) text << ", " << 100 + i;
    text << "\n[GLOBAL]\nG_ONE = TEXT, 1\n";
    for (std::size_t i = 0; i < kSensors; ++i) AddSensor(100 + i, text);
    return text.str();
  }

 private:
  std::size_t Below(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
  }

  std::string Number() {
    static const char* const kNumbers[] = {"0",   "1",          "-2",         "0x1F", "LIMIT",
                                           "300", "0xFFFFFFEC", "2147483648", "-300", "4000000001"};
    if (Below(2) == 0) return kNumbers[Below(std::size(kNumbers))];
    return std::to_string(std::uniform_int_distribution<std::uint32_t>(0, 4294967294)(random_));
  }

  std::string Text() {
    static const char* const kTexts[] = {
        "plain",   "\"a, b\"",       "\" blanks \"", "\"#sign\"", "\"=1+1\"",
        "\"x\\\"", "\"semi;colon\"", "caf\xC3\xA9",  "\"a # b\"", "\"tab\there\""};
    return kTexts[Below(std::size(kTexts))];
  }

  void Add(const char* key, const std::string& value, std::ostringstream& text) {
    static const char* const kBlanks[] = {"", "  ", "\t"};
    static const char* const kEquals[] = {" = ", "=", "      = "};
    static const char* const kEnds[] = {"\n", "  # why\n", " ; so\n", "\r\n"};
    text << kBlanks[Below(3)] << key << kEquals[Below(3)] << value << kEnds[Below(4)];
  }

  void AddSensor(std::size_t id, std::ostringstream& text) {
    text << "\n# sensor " << id << "\n[SENSOR]\n";
    Add("PARENT", Below(2) == 0 ? "A" : "\"B, C\"", text);
    Add("NAME", "S" + std::to_string(id) + (Below(4) == 0 ? "x" : ""), text);
    Add("ID", std::to_string(id), text);
    Add("TYPE", std::to_string(1 + Below(5)), text);
    Add("INITFLAG", Number(), text);
    Add("CONTROLMASK", Number(), text);
    for (const char* key : {"THRESHOLD_FH", "THRESHOLD_WL", "THRESHOLD_FL", "THRESHOLD_WH"}) {
      if (Below(2) == 0) Add(key, Number(), text);
    }
    Add("VALUE", "TEXT, G_ONE", text);
    for (const char* key : {"P_UNIT", "P_NOTE"}) {
      if (Below(2) == 0) Add(key, Text(), text);
    }
  }

  std::mt19937 random_;
};

class TableTest : public testing::Test {
 protected:
  TableTest() {
    std::string name = (std::filesystem::temp_directory_path() / "rux-table-test-XXXXXX").string();
    folder_ = mkdtemp(name.data());
    Write(".rux.json", kLimits);
    projects_ = std::make_shared<rux::settings::Projects>(
        rux::settings::ProjectChoice{}, [](const std::string&) { return std::string(); });
  }
  ~TableTest() override { std::filesystem::remove_all(folder_); }

  std::string PathOf(const std::string& name) const { return (folder_ / name).string(); }
  void Write(const std::string& name, const std::string& text) const {
    std::ofstream(PathOf(name), std::ios::binary) << text;
  }
  std::string Read(const std::string& name) const {
    std::ifstream file(PathOf(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  Machine Load(const std::string& path) const {
    std::vector<Machine> machines = rux::machine::Load({path}, {{}, projects_, ""});
    return std::move(machines.front());
  }

  std::string CsvOf(const std::string& name) const {
    const Machine machine = Load(PathOf(name));
    std::vector<rux::table::Column> columns;
    for (const char* column :
         {"NAME", "ID", "TYPE", "PARENT", "INITFLAG", "CONTROLMASK", "THRESHOLD_FL", "THRESHOLD_WL",
          "THRESHOLD_WH", "THRESHOLD_FH", "P_UNIT", "P_NOTE", "VALUE"})
      columns.push_back(rux::table::ColumnFor(Kind(), column));
    const rux::table::Sheet sheet =
        rux::table::SheetOf(rux::table::MakeTable(machine, Kind(), columns));
    return rux::support::WrittenText(
        [&](rux::support::TextStream& out) { rux::table::WriteCsv(sheet, out); });
  }

  // How many edits that takes.
  std::size_t Apply(const std::string& csv, const std::string& script) const {
    const rux::reconcile::Listing listing =
        rux::reconcile::ReadListing({PathOf(csv), "csv", {}}, Kind(), {});
    const std::string path = PathOf(script);
    const Machine machine = Load(path);
    const auto load = [this](const std::string& name) { return Load(name); };
    const rux::reconcile::Comparison comparison =
        rux::reconcile::CompareToAdopt(machine, listing, load);
    const rux::reconcile::Adoption adoption = rux::reconcile::PlanAdoption(comparison);
    for (const rux::reconcile::Edit& edit : adoption.edits)
      EXPECT_EQ(edit.reason, "") << edit.difference->name << ' ' << edit.difference->theirs;
    rux::reconcile::VerifyAdoption(adoption, listing, path, {}, load);
    ruxcomp::reader::Texts::Clear();
    rux::reconcile::WriteScripts(adoption);
    return adoption.CountOfMade();
  }

  static const ruxcomp::language::SectionKind& Kind() {
    return ruxcomp::language::KindOf(ruxcomp::language::SECTION_SENSOR);
  }

 private:
  std::filesystem::path folder_;
  std::shared_ptr<rux::settings::Projects> projects_;
};

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
    ++count;
  return count;
}

TEST_F(TableTest, IsWhatAnotherMachineBecomes) {
  constexpr unsigned kMachines = 100;
  std::size_t edits = 0;
  for (unsigned seed = 0; seed < kMachines; ++seed) {
    SCOPED_TRACE(seed);
    Generator generator(seed);
    const std::string before = generator.Script();
    Write("now.rux", before);
    Write("wanted.rux", generator.Script());
    const std::string wanted = CsvOf("wanted.rux");
    Write("wanted.csv", wanted);
    edits += Apply("wanted.csv", "now.rux");
    ASSERT_EQ(CsvOf("now.rux"), wanted);
    const std::string after = Read("now.rux");
    for (const char* comment : {"# why", "; so", "# sensor"})
      ASSERT_EQ(CountOf(after, comment), CountOf(before, comment));
    // Once more, there is nothing to do.
    ASSERT_EQ(Apply("wanted.csv", "now.rux"), 0u);
    ASSERT_EQ(Read("now.rux"), after);
  }
  // The machines do differ: in a third of the cells or more.
  EXPECT_GT(edits, kMachines * kSensors * 12 / 3);
}

TEST_F(TableTest, OfAMachineChangesNothingInIt) {
  for (unsigned seed = 1000; seed < 1050; ++seed) {
    SCOPED_TRACE(seed);
    const std::string script = Generator(seed).Script();
    Write("now.rux", script);
    Write("now.csv", CsvOf("now.rux"));
    ASSERT_EQ(Apply("now.csv", "now.rux"), 0u);
    ASSERT_EQ(Read("now.rux"), script);
  }
}

}  // namespace
