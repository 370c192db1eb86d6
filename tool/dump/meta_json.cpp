// A meta file for programs.
#include <cstddef>
#include <map>

#include "tool/compiled/keywords.h"
#include "tool/compiled/meta_index.h"
#include "tool/dump/dump.h"

namespace rux {
namespace {

// The values as `rux get` prints them, with the words that stand in the file.
Json ValuesJson(const CompiledMeta& meta, const std::vector<std::uint32_t>& words) {
  EntryPart part{"", true, {}};
  for (const std::uint32_t word : words) part.items.push_back(Resolve(meta, word));
  Json values = PartJson(part)["values"];
  for (std::size_t i = 0; i < words.size(); ++i) values[i]["word"] = words[i];
  return values;
}

Json EntryJson(const CompiledMeta& meta, const CompiledSection& section, const CompiledEntry& entry,
               const RawJson& raw) {
  Json json;
  PutText(json, "name", KeyOf(meta, section, entry));
  json["identifier"] = entry.identifier;
  json["values"] = ValuesJson(meta, entry.values);
  raw.Put(json, entry.pieces);
  return json;
}

Json SectionJson(const CompiledMeta& meta, const CompiledSection& section, std::size_t ordinal,
                 const RawJson& raw) {
  Json json = {{"kind", CompiledSectionKeyword(section.identifier)},
               {"ordinal", ordinal},
               {"identifier", section.identifier}};
  raw.Put(json, section.pieces);
  Json& entries = json["entries"] = Json::array();
  for (const CompiledEntry& entry : section.entries) {
    entries.push_back(EntryJson(meta, section, entry, raw));
  }
  return json;
}

Json TableJson(const CompiledTable& table, const RawJson& raw) {
  Json json = {
      {"class", IndexClassName(table.base)}, {"base", table.base}, {"length", table.length}};
  if (!table.note.empty()) json["note"] = table.note;
  raw.Put(json, table.pieces);
  Json& items = json["items"] = Json::array();
  for (const std::string& text : table.texts) PutText(items.emplace_back(), "value", text);
  for (const std::uint32_t number : table.numbers) items.push_back({{"value", number}});
  for (const TableCells& cells : table.cells) items.push_back({{"value", cells}});
  return json;
}

}  // namespace

Json MetaJson(const std::string& path, const CompiledMeta& meta, const RawJson& raw) {
  Json json = TitleJson(path, Form::kMeta, meta.version, meta.creation_time);
  std::vector<Piece> pieces = meta.header;
  pieces.insert(pieces.end(), meta.directory.begin(), meta.directory.end());
  pieces.insert(pieces.end(), meta.frame.begin(), meta.frame.end());
  raw.Put(json, pieces);
  std::map<std::uint32_t, std::size_t> counts;
  Json& sections = json["sections"] = Json::array();
  for (const CompiledSection& section : meta.sections) {
    sections.push_back(SectionJson(meta, section, counts[section.identifier]++, raw));
  }
  Json& tables = json["tables"] = Json::array();
  for (const CompiledTable& table : meta.tables) tables.push_back(TableJson(table, raw));
  return json;
}

}  // namespace rux
