// A meta file for programs.
#include <cstddef>
#include <map>

#include "compiled/datum.h"
#include "inspect/dump.h"
#include "inspect/value_json.h"
#include "ruxcomp/language/sections.h"

namespace rux::inspect {
namespace {

// The values as `rux get` prints them, with the words that stand in the file.
void WriteValues(support::JsonWriter& json, const compiled::CompiledMeta& meta,
                 const std::vector<std::uint32_t>& words) {
  json.Key("values").Open('[');
  for (const std::uint32_t word : words) {
    WriteDatum(json.Open('{'), compiled::Resolve(meta, word));
    json.Key("word").Number(word).Close();
  }
  json.Close();
}

void WriteEntry(support::JsonWriter& json, const compiled::CompiledMeta& meta,
                const compiled::CompiledSection& section, const compiled::CompiledEntry& entry,
                const RawJson& raw) {
  WriteText(json.Open('{'), "name", compiled::KeyOf(meta, section, entry));
  json.Key("identifier").Number(entry.identifier);
  WriteValues(json, meta, entry.values);
  raw.Write(json, entry.pieces);
  json.Close();
}

void WriteSection(support::JsonWriter& json, const compiled::CompiledMeta& meta,
                  const compiled::CompiledSection& section, std::size_t ordinal,
                  const RawJson& raw) {
  json.Open('{').Key("kind").String(
      ruxcomp::language::FindCompiledKind(section.identifier)->keyword);
  json.Key("ordinal").Number(ordinal).Key("identifier").Number(section.identifier);
  raw.Write(json, section.pieces);
  json.Key("entries").Open('[');
  for (const compiled::CompiledEntry& entry : section.entries)
    WriteEntry(json, meta, section, entry, raw);
  json.Close().Close();
}

void WriteCells(support::JsonWriter& json, const compiled::TableCells& cells) {
  json.Open('{').Key("value").Open('[');
  for (const auto cell : cells) json.Number(cell);
  json.Close().Close();
}

void WriteTable(support::JsonWriter& json, const compiled::CompiledTable& table,
                const RawJson& raw) {
  json.Open('{').Key("class").String(ruxcomp::language::FindClass(table.base)->title);
  json.Key("base").Number(table.base).Key("length").Number(table.length);
  if (!table.note.empty()) json.Key("note").String(table.note);
  raw.Write(json, table.pieces);
  json.Key("items").Open('[');
  for (const std::string& text : table.texts) {
    WriteText(json.Open('{'), "value", text);
    json.Close();
  }
  for (const std::uint32_t number : table.numbers) {
    json.Open('{').Key("value").Number(number).Close();
  }
  for (const compiled::TableCells& cells : table.cells) WriteCells(json, cells);
  json.Close().Close();
}

}  // namespace

std::string MetaJson(const std::string& path, const compiled::CompiledMeta& meta,
                     const RawJson& raw) {
  support::JsonWriter json;
  WriteTitle(json.Open('{'), path, compiled::Form::kMeta, meta.version, meta.creation_time);
  std::vector<compiled::Piece> pieces = meta.header;
  pieces.insert(pieces.end(), meta.directory.begin(), meta.directory.end());
  pieces.insert(pieces.end(), meta.frame.begin(), meta.frame.end());
  raw.Write(json, pieces);
  std::map<std::uint32_t, std::size_t> counts;
  json.Key("sections").Open('[');
  for (const compiled::CompiledSection& section : meta.sections) {
    WriteSection(json, meta, section, counts[section.identifier]++, raw);
  }
  json.Close().Key("tables").Open('[');
  for (const compiled::CompiledTable& table : meta.tables) WriteTable(json, table, raw);
  return json.Close().Close().TakeText();
}

}  // namespace rux::inspect
