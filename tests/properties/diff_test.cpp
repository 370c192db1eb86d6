// A comparison finds the edits that were made, all of them and nothing else; backwards, it finds
// their mirrors.
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "diff/change.h"
#include "diff/classes.h"
#include "diff/compare.h"
#include "machine/load.h"
#include "machine/machine.h"

namespace {

using rux::diff::Change;
using rux::machine::Machine;

// A section as its items, in the order in which a script writes them.
struct ScriptSection {
  std::string kind;
  std::vector<std::pair<std::string, std::string>> items;

  std::string& operator[](const std::string& key) {
    for (auto& item : items) {
      if (item.first == key) return item.second;
    }
    return items.emplace_back(key, "").second;
  }
  bool Has(const std::string& key) const {
    return std::any_of(items.begin(), items.end(),
                       [&](const auto& item) { return item.first == key; });
  }
  void Remove(const std::string& key) {
    items.erase(std::remove_if(items.begin(), items.end(),
                               [&](const auto& item) { return item.first == key; }),
                items.end());
  }
};

struct Script {
  std::vector<ScriptSection> sections;

  std::vector<ScriptSection*> Of(const std::string& kind) {
    std::vector<ScriptSection*> found;
    for (ScriptSection& section : sections) {
      if (section.kind == kind) found.push_back(&section);
    }
    return found;
  }
  std::string Text() const {
    std::ostringstream text;
    for (const ScriptSection& section : sections) {
      text << '[' << section.kind << "]\n";
      for (const auto& [key, value] : section.items) text << key << " = " << value << '\n';
    }
    return text.str();
  }
};

constexpr int kSensors = 40;

ScriptSection Sensor(int id, const std::string& group) {
  const std::string number = std::to_string(id);
  return {"SENSOR",
          {{"PARENT", group},
           {"NAME", "S" + number},
           {"ID", number},
           {"TYPE", "1"},
           {"INITFLAG", "3"},
           {"CONTROLMASK", "0"},
           {"THRESHOLD_FH", "100"},
           {"VALUE", "CALC, +, " + number + ", 7"},
           {"P_NOTE", "n" + number}}};
}

Script FirstScript() {
  Script script;
  script.sections = {
      {"MORVRUX", {{"VERSION", "1"}}},
      {"DEFINE", {{"TEXT", "1"}, {"CALC", "2"}, {"CALL", "3"}}},
      {"SYSTEM", {{"TYPE", "1"}, {"MODEL", "M"}, {"FLAG", "0"}, {"RUXLOOP", "1"}}},
      {"PELMGROUP", {{"NAME", "ALL"}, {"ID", "1"}, {"PID", "0"}, {"SENSORS", ""}}},
      {"GLOBAL", {{"G_ONE", "TEXT, 1"}}},
  };
  for (const std::string group : {"A", "B", "C", "D"}) {
    script.sections.push_back({"GROUP", {{"PARENT", "0"}, {"NAME", group}, {"CHILDGROUP", "0"}}});
  }
  for (const std::string number : {"1", "2", "3", "4"}) {
    script.sections.push_back(
        {"ACTION", {{"NAME", "ACT" + number}, {"VALUE", "CALC, *, 3, " + number}}});
    script.sections.push_back(
        {"TABLE", {{"NAME", "TAB" + number}, {"TYPE", number}, {"0.255", number}}});
  }
  for (int i = 0; i < kSensors; ++i) {
    script.sections.push_back(Sensor(100 + i, std::string(1, static_cast<char>('A' + i % 4))));
  }
  return script;
}

// All sensors are members.
void ListMembers(Script& script) {
  std::string members;
  for (ScriptSection* sensor : script.Of("SENSOR"))
    members += (members.empty() ? "" : ", ") + (*sensor)["ID"];
  (*script.Of("PELMGROUP").front())["SENSORS"] = members;
}

// What a change is known by: its class, and what it is about as the old machine has it.
using Known = std::multiset<std::string>;

std::string KnownBy(const std::string& id, const std::string& name, const std::string& entry) {
  return id + ' ' + name + ' ' + entry;
}

class Editor {
 public:
  explicit Editor(unsigned seed) : random_(seed) {}

  // Makes one edit, and returns what a comparison is to report.
  std::string Edit(Script& script) {
    using Function = std::string (Editor::*)(Script&);
    static constexpr Function kEdits[] = {
        &Editor::ChangeEntry, &Editor::ChangeEntry, &Editor::ChangeEntry,  &Editor::Rename,
        &Editor::ChangeId,    &Editor::Move,        &Editor::AddOrRemove,  &Editor::ChangeLimit,
        &Editor::ChangeTable, &Editor::AddSensor,   &Editor::RemoveSensor, &Editor::ChangeAction,
        &Editor::ChangeGlobal};
    return (this->*kEdits[Below(sizeof kEdits / sizeof *kEdits)])(script);
  }
  // Called before the edits of the next machine.
  void BeginStep() { touched_.clear(); }

 private:
  std::size_t Below(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
  }
  std::string NewNumber() { return std::to_string(++last_number_); }

  // One that this step has not touched, for each edit is to be seen by itself.
  ScriptSection& Fresh(Script& script, const std::string& kind) {
    const std::vector<ScriptSection*> all = script.Of(kind);
    for (;;) {
      ScriptSection& section = *all[Below(all.size())];
      if (touched_.insert(section["NAME"]).second) return section;
    }
  }

  std::string ChangeEntry(Script& script) {
    static const std::map<std::string, std::string> kClasses = {
        {"TYPE", "type-changed"},
        {"INITFLAG", "initflag-changed"},
        {"CONTROLMASK", "controlmask-changed"}};
    ScriptSection& sensor = Fresh(script, "SENSOR");
    auto row = kClasses.begin();
    std::advance(row, Below(kClasses.size()));
    sensor[row->first] = NewNumber();
    return KnownBy(row->second, sensor["NAME"], row->first);
  }

  std::string Rename(Script& script) {
    ScriptSection& sensor = Fresh(script, "SENSOR");
    const std::string before = sensor["NAME"];
    sensor["NAME"] = "R" + NewNumber();
    touched_.insert(sensor["NAME"]);
    return KnownBy("renamed", before, "NAME");
  }

  std::string ChangeId(Script& script) {
    ScriptSection& sensor = Fresh(script, "SENSOR");
    sensor["ID"] = NewNumber();
    return KnownBy("id-changed", sensor["NAME"], "ID");
  }

  std::string Move(Script& script) {
    ScriptSection& sensor = Fresh(script, "SENSOR");
    sensor["PARENT"] = sensor["PARENT"] == "A" ? "B" : "A";
    return KnownBy("sensor-moved", sensor["NAME"], "PARENT");
  }

  // A property, or a value of the sensor's own.
  std::string AddOrRemove(Script& script) {
    ScriptSection& sensor = Fresh(script, "SENSOR");
    const bool is_property = Below(2) == 0;
    const std::string key = is_property ? "P_MORE" : "VALUE_MORE";
    const std::string what = is_property ? "property" : "value";
    if (sensor.Has(key)) {
      sensor.Remove(key);
      return KnownBy(what + "-removed", sensor["NAME"], key);
    }
    sensor[key] = is_property ? NewNumber() : "TEXT, 5";
    return KnownBy(what + "-added", sensor["NAME"], key);
  }

  std::string ChangeLimit(Script& script) {
    static const char* const kKeys[] = {"THRESHOLD_FH", "THRESHOLD_WH", "THRESHOLD_FL",
                                        "THRESHOLD_WL"};
    ScriptSection& sensor = Fresh(script, "SENSOR");
    const std::string key = kKeys[Below(4)];
    if (!sensor.Has(key)) {
      sensor[key] = NewNumber();
      return KnownBy("limit-added", sensor["NAME"], key);
    }
    if (Below(2) == 0) {
      sensor.Remove(key);
      return KnownBy("limit-removed", sensor["NAME"], key);
    }
    sensor[key] = NewNumber();
    return KnownBy("limit-changed", sensor["NAME"], key);
  }

  std::string ChangeTable(Script& script) {
    ScriptSection& table = Fresh(script, "TABLE");
    const std::string cell = std::to_string(Below(256));
    const std::string before = table.Has(cell) ? table[cell] : table["0.255"];
    table[cell] = before == "77" ? "78" : "77";
    return KnownBy("cells-changed", table["NAME"], cell);
  }

  std::string AddSensor(Script& script) {
    const int id = static_cast<int>(++last_number_);
    script.sections.push_back(Sensor(id, "C"));
    touched_.insert("S" + std::to_string(id));
    return KnownBy("section-added", "S" + std::to_string(id), "");
  }

  std::string RemoveSensor(Script& script) {
    const std::string name = Fresh(script, "SENSOR")["NAME"];
    const auto is_it = [&](ScriptSection& section) {
      return section.kind == "SENSOR" && section["NAME"] == name;
    };
    script.sections.erase(std::find_if(script.sections.begin(), script.sections.end(), is_it));
    return KnownBy("section-removed", name, "");
  }

  std::string ChangeAction(Script& script) {
    ScriptSection& action = Fresh(script, "ACTION");
    action["VALUE"] = "CALC, *, 3, " + NewNumber();
    return KnownBy("operand-changed", action["NAME"], "VALUE/Operand");
  }

  std::string ChangeGlobal(Script& script) {
    if (!touched_.insert("GLOBAL").second) return Rename(script);
    (*script.Of("GLOBAL").front())["G_ONE"] = "TEXT, " + NewNumber();
    return KnownBy("operand-changed", "", "G_ONE/Text");
  }

  std::mt19937 random_;
  unsigned last_number_ = 1000;
  std::set<std::string> touched_;
};

bool IsOfPosition(const Change& change) {
  return change.row->category == rux::diff::Category::kPosition;
}

Known KnownOf(const std::vector<Change>& changes) {
  Known known;
  for (const Change& change : changes) {
    if (IsOfPosition(change)) continue;
    known.insert(KnownBy(std::string(change.row->message->id), change.subject().name.value_or(""),
                         change.EntryText()));
  }
  return known;
}

// All of a change, forwards or backwards.
std::string WholeOf(const Change& change, bool is_mirrored) {
  const rux::diff::ClassRow& row = is_mirrored ? rux::diff::RowOf(change.row->mirror) : *change.row;
  const rux::diff::Side& from = is_mirrored ? change.after : change.before;
  const rux::diff::Side& to = is_mirrored ? change.before : change.after;
  std::ostringstream whole;
  whole << row.message->id << ' ' << change.kind->keyword << ' ' << change.EntryText();
  for (const rux::diff::Side* side : {&from, &to}) {
    whole << " | " << side->id.value_or(0) << ' ' << side->name.value_or("") << ' '
          << side->text.value_or("(none)");
    if (side->place) whole << ' ' << side->place->path << ':' << side->place->line;
  }
  return whole.str();
}

Known WholesOf(const std::vector<Change>& changes, bool is_mirrored) {
  Known wholes;
  for (const Change& change : changes) wholes.insert(WholeOf(change, is_mirrored));
  return wholes;
}

class Folder {
 public:
  Folder() : path_(std::filesystem::temp_directory_path() / "rux-diff-test-XXXXXX") {
    std::string name = path_.string();
    path_ = mkdtemp(name.data());
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string Write(const Script& script) {
    const std::string path = (path_ / (std::to_string(count_++) + ".rux")).string();
    std::ofstream(path) << script.Text();
    return path;
  }

 private:
  std::filesystem::path path_;
  std::size_t count_ = 0;
};

TEST(Diff, FindsAThousandEditsExactly) {
  constexpr std::size_t kSteps = 250;
  constexpr std::size_t kEditsPerStep = 4;
  Folder folder;
  Script script = FirstScript();
  ListMembers(script);
  std::vector<std::string> paths = {folder.Write(script)};
  std::vector<Known> expected;
  Editor editor(20240817);
  for (std::size_t step = 0; step < kSteps; ++step) {
    editor.BeginStep();
    Known edits;
    for (std::size_t i = 0; i < kEditsPerStep; ++i) edits.insert(editor.Edit(script));
    ListMembers(script);
    expected.push_back(edits);
    paths.push_back(folder.Write(script));
  }
  const std::vector<Machine> machines = rux::machine::Load(paths, {});
  for (std::size_t step = 0; step < kSteps; ++step) {
    SCOPED_TRACE(step);
    const std::vector<Change> found = rux::diff::Compare(machines[step], machines[step + 1]);
    ASSERT_EQ(KnownOf(found), expected[step]);
    const std::vector<Change> back = rux::diff::Compare(machines[step + 1], machines[step]);
    ASSERT_EQ(WholesOf(back, true), WholesOf(found, false));
    ASSERT_TRUE(rux::diff::Compare(machines[step], machines[step]).empty());
  }
}

TEST(Diff, SaysNothingButPositionsOfSectionsInAnotherOrder) {
  Folder folder;
  Script script = FirstScript();
  ListMembers(script);
  std::vector<std::string> paths = {folder.Write(script)};
  std::mt19937 random(7);
  constexpr std::size_t kOrders = 50;
  for (std::size_t i = 0; i < kOrders; ++i) {
    // Cells that no row sets are those of the table before: all rows here set all cells.
    std::shuffle(script.sections.begin() + 2, script.sections.end(), random);
    paths.push_back(folder.Write(script));
  }
  const std::vector<Machine> machines = rux::machine::Load(paths, {});
  for (std::size_t i = 1; i <= kOrders; ++i) {
    const std::vector<Change> found = rux::diff::Compare(machines[0], machines[i]);
    EXPECT_FALSE(found.empty());
    EXPECT_EQ(KnownOf(found), Known());
    EXPECT_EQ(WholesOf(rux::diff::Compare(machines[i], machines[0]), true), WholesOf(found, false));
  }
}

}  // namespace
