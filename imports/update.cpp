#include "imports/update.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "format/format.h"
#include "imports/folder.h"
#include "imports/layout.h"
#include "imports/merge.h"
#include "imports/script_lines.h"
#include "reader/script.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "settings/document.h"
#include "settings/json_file.h"
#include "support/json.h"

namespace rux::imports {
namespace {

namespace language = ruxcomp::language;
using settings::JsonValue;

constexpr std::string_view kSensorKey = "[SENSOR] ";
constexpr std::size_t kLargestRecord = std::size_t{1} << 30;

// Missing files are empty.
std::string TextIn(const std::string& folder, const std::string& name) {
  const std::string path = PathIn(folder, name);
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) return "";
  return settings::ReadTextFile(path, kLargestRecord);
}

using Texts = std::map<std::string, std::string>;  // by the names of their files

Texts TextsByName(const std::vector<ScriptFile>& files) {
  Texts texts;
  for (const ScriptFile& file : files) texts.emplace(file.name, file.text);
  return texts;
}

bool IsScript(const std::string& name) { return std::filesystem::path(name).extension() == ".rux"; }

// Calls visit(part) for the sections of sensors.
template <class Visit>
void ForEachSensor(const std::string& text, Visit visit) {
  for (const ScriptPart& part : PartsOf(text)) {
    if (part.key.compare(0, kSensorKey.size(), kSensorKey) == 0) visit(part);
  }
}

// Puts the sensors for which `places` has another file into that.
void MoveTo(const Texts& places, Texts& texts) {
  Texts added;
  for (auto& [name, text] : texts) {
    std::string rest;
    for (const ScriptPart& part : PartsOf(text)) {
      const auto place = places.find(part.key);
      const bool is_moved = place != places.end() && place->second != name;
      std::string& target = is_moved ? added[place->second] : rest;
      for (const ScriptLine& line : part.lines) target += line.text;
      if (is_moved) target += '\n';
    }
    text = std::move(rest);
  }
  for (const auto& [name, text] : added) {
    std::string& target = texts[name];
    if (!target.empty()) target += '\n';
    target += text;
  }
}

// A sensor that is to be in another file than before goes there, as it was edited.
void MoveSensors(const Texts& after, Texts& before, Texts& edited) {
  Texts places;  // the files of sensors, by their keys
  for (const auto& [name, text] : after) {
    ForEachSensor(text, [&, &file = name](const ScriptPart& part) { places[part.key] = file; });
  }
  Texts moved;
  for (const auto& [name, text] : before) {
    ForEachSensor(text, [&, &file = name](const ScriptPart& part) {
      const auto place = places.find(part.key);
      if (place != places.end() && place->second != file) moved.insert(*place);
    });
  }
  if (moved.empty()) return;
  MoveTo(moved, before);
  MoveTo(moved, edited);
}

std::string_view ValueOf(const ruxcomp::reader::Section& section, language::EntryId entry) {
  for (std::uint32_t i = 0; i < section.item_count; ++i) {
    if (section.items[i].key == language::KeywordOf(entry)) return section.items[i].value;
  }
  return {};
}

}  // namespace

ScriptFile RecordOf(const std::vector<ScriptFile>& files) {
  return {kRecordName, support::JsonDocument([&](support::JsonObject& json) {
            json.Schema(1);
            json.Objects("files", files, [](support::JsonObject& entry, const ScriptFile& file) {
              entry.Member("name", file.name);
              entry.Array("lines", [&](support::JsonArray& lines) {
                std::string_view rest = file.text;
                while (!rest.empty()) {
                  const std::size_t end = rest.find('\n');
                  lines.Item(rest.substr(0, end));
                  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
                }
              });
            });
          })};
}

std::optional<std::vector<ScriptFile>> ReadRecord(const std::string& folder) {
  const std::string path = PathIn(folder, kRecordName);
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) return std::nullopt;
  const settings::Document document(path, settings::ReadTextFile(path, kLargestRecord));
  using Kind = JsonValue::Kind;
  const auto root =
      document.Members(document.root(), {{"schema", Kind::kNumber}, {"files", Kind::kArray}});
  std::vector<ScriptFile> files;
  if (root[1] == nullptr) return files;
  for (const JsonValue& entry : root[1]->items) {
    const auto members =
        document.Members(entry, {{"name", Kind::kString}, {"lines", Kind::kArray}});
    if (members[0] == nullptr || members[1] == nullptr)
      document.Refuse(entry.line, "a file has a name and lines");
    ScriptFile& file = files.emplace_back();
    file.name = members[0]->text;
    for (const JsonValue& line : members[1]->items) {
      document.Expect(line, Kind::kString, "a line");
      file.text += line.text + '\n';
    }
  }
  return files;
}

std::vector<ScriptFile> ScriptsIn(const std::string& folder) {
  std::vector<ScriptFile> files;
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator(folder, ignored)) {
    std::string name = entry.path().filename().string();
    if (IsScript(name) && entry.is_regular_file(ignored)) {
      std::string text = TextIn(folder, name);
      files.push_back({std::move(name), std::move(text)});
    }
  }
  return files;
}

std::map<std::string, std::uint32_t> SensorIdsIn(const std::vector<ScriptFile>& files) {
  std::map<std::string, std::uint32_t> ids;
  for (const ScriptFile& file : files) {
    if (!IsScript(file.name)) continue;
    const ruxcomp::reader::Script script(file.text, [](const ruxcomp::reader::Problem&) {});
    for (const ruxcomp::reader::Section& section : script.sections()) {
      if (section.name != language::FindKind("SENSOR")->keyword) continue;
      const language::Number id =
          language::ReadNumber(std::string(ValueOf(section, language::ENTRY_ID)));
      if (id.is_number) ids.emplace(std::string(ValueOf(section, language::ENTRY_NAME)), id.value);
    }
  }
  return ids;
}

Update UpdateOf(const std::string& folder, const std::vector<ScriptFile>& record,
                const std::vector<ScriptFile>& written) {
  Texts before = TextsByName(record);
  const Texts after = TextsByName(written);
  Texts edited;
  for (const Texts* const texts : {&std::as_const(before), &after}) {
    for (const auto& [name, text] : *texts) {
      if (edited.count(name) == 0) edited.emplace(name, TextIn(folder, name));
    }
  }
  const Texts there = edited;
  MoveSensors(after, before, edited);
  Update update;
  for (const auto& [name, text] : edited) {
    Merged merged = Merge(before[name], text, after.count(name) == 0 ? "" : after.at(name));
    const bool is_left = after.count(name) == 0 && !merged.text.empty() && IsScript(name);
    if (is_left && merged.conflicts.empty())
      merged.conflicts.push_back({1, "", "it has sections of its own", ""});
    for (Conflict& conflict : merged.conflicts)
      update.conflicts.push_back({name, std::move(conflict)});
    if (merged.text.empty()) {
      if (!there.at(name).empty()) update.removed.push_back(name);
      continue;
    }
    const bool is_changed = merged.text != there.at(name) && IsScript(name);
    update.files.push_back(
        {name, is_changed ? format::Format(merged.text).text : std::move(merged.text)});
  }
  return update;
}

}  // namespace rux::imports
