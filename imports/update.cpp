#include "imports/update.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "format/format.h"
#include "imports/folder.h"
#include "imports/layout.h"
#include "imports/merge.h"
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

constexpr std::size_t kLargestRecord = std::size_t{1} << 30;

// Missing files are empty.
std::string TextIn(const std::string& folder, const std::string& name) {
  const std::string path = PathIn(folder, name);
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) return "";
  return settings::ReadTextFile(path, kLargestRecord);
}

std::map<std::string, std::string> TextsByName(const std::vector<ScriptFile>& files) {
  std::map<std::string, std::string> texts;
  for (const ScriptFile& file : files) texts.emplace(file.name, file.text);
  return texts;
}

bool IsScript(const std::string& name) { return std::filesystem::path(name).extension() == ".rux"; }

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
  const std::map<std::string, std::string> before = TextsByName(record);
  const std::map<std::string, std::string> after = TextsByName(written);
  std::set<std::string> names;
  for (const auto& [name, text] : before) names.insert(name);
  for (const auto& [name, text] : after) names.insert(name);
  const auto text_in = [](const std::map<std::string, std::string>& texts,
                          const std::string& name) {
    const auto found = texts.find(name);
    return found == texts.end() ? std::string() : found->second;
  };
  Update update;
  for (const std::string& name : names) {
    const std::string edited = TextIn(folder, name);
    Merged merged = Merge(text_in(before, name), edited, text_in(after, name));
    for (Conflict& conflict : merged.conflicts)
      update.conflicts.push_back({name, std::move(conflict)});
    if (merged.text.empty()) {
      if (!edited.empty()) update.removed.push_back(name);
      continue;
    }
    const bool is_changed = merged.text != edited && IsScript(name);
    update.files.push_back(
        {name, is_changed ? format::Format(merged.text).text : std::move(merged.text)});
  }
  return update;
}

}  // namespace rux::imports
