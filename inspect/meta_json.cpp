// A meta file for programs.
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "compiled/datum.h"
#include "compiled/meta.h"
#include "inspect/dump.h"
#include "inspect/entry_value.h"
#include "inspect/section_list.h"
#include "inspect/section_names.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/file/views.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "support/json.h"
#include "support/text_stream.h"

namespace rux::inspect {
namespace {

using support::JsonArray;
using support::JsonObject;

// The values as `rux get` prints them, with the words that are in the file.
void WriteTypedValues(JsonObject& json, const std::vector<compiled::Datum>& values,
                      const std::vector<std::uint32_t>& words) {
  std::size_t next = 0;
  json.Objects("values", words, [&](JsonObject& value, std::uint32_t word) {
    WriteDatum(value, values[next++]);
    value.Member("word", word);
  });
}

// What is written of each section.
struct WrittenMeta {
  const compiled::CompiledMeta& meta;
  const CompiledValues values;
  const RawJson& raw;
};

void WriteEntry(JsonObject& json, const WrittenMeta& written,
                const compiled::CompiledSection& section, const compiled::CompiledEntry& entry) {
  WriteText(json, "name", compiled::KeyOf(written.meta, section, entry));
  json.Member("identifier", entry.identifier);
  WriteTypedValues(json, written.values.Of(section, entry), entry.values);
  written.raw.Write(json, entry.pieces);
}

void WriteSection(JsonObject& json, const WrittenMeta& written,
                  const compiled::CompiledSection& section, std::size_t ordinal) {
  json.Member("kind", ruxcomp::language::FindCompiledKind(section.identifier)->keyword);
  json.Member("ordinal", ordinal);
  json.Member("identifier", section.identifier);
  written.raw.Write(json, section.pieces);
  json.Objects("entries", section.entries,
               [&](JsonObject& object, const compiled::CompiledEntry& entry) {
                 WriteEntry(object, written, section, entry);
               });
}

// A table has items of one sort: texts, numbers or cells.
void WriteItems(JsonArray& items, const compiled::CompiledTable& table) {
  for (const std::string& text : table.texts) {
    items.Object([&](JsonObject& item) { WriteText(item, "value", text); });
  }
  for (const std::uint32_t number : table.numbers) {
    items.Object([&](JsonObject& item) { item.Member("value", number); });
  }
  for (const compiled::TableCells& cells : table.cells) {
    items.Object([&](JsonObject& item) {
      item.Array("value", [&](JsonArray& list) { list.Items(cells); });
    });
  }
}

void WriteTable(JsonObject& json, const compiled::CompiledTable& table, const RawJson& raw) {
  json.Member("class", ruxcomp::language::FindClass(table.base)->title);
  json.Member("base", table.base);
  json.Member("length", table.length);
  if (!table.note.empty()) json.Member("note", table.note);
  raw.Write(json, table.pieces);
  json.Array("items", [&](JsonArray& items) { WriteItems(items, table); });
}

}  // namespace

void WriteMetaJson(const std::string& path, const compiled::CompiledMeta& meta,
                   const Selection& selection, const RawJson& raw, support::TextStream& out) {
  support::WriteJson(out, [&](JsonObject& json) {
    WriteTitle(json, path, compiled::Form::kMeta, meta.version, meta.creation_time);
    std::vector<compiled::Piece> pieces = meta.header;
    pieces.insert(pieces.end(), meta.directory.begin(), meta.directory.end());
    pieces.insert(pieces.end(), meta.frame.begin(), meta.frame.end());
    raw.Write(json, pieces);
    json.Array("sections", [&](JsonArray& list) {
      const WrittenMeta written{meta, CompiledValues(meta), raw};
      std::map<std::uint32_t, std::size_t> counts;
      for (const compiled::CompiledSection& section : meta.sections) {
        const std::size_t ordinal = counts[section.identifier]++;
        const auto kind = ruxcomp::language::FindCompiledKind(section.identifier)->source;
        if (!selection.Has(kind, ordinal)) continue;
        list.Object([&](JsonObject& object) { WriteSection(object, written, section, ordinal); });
      }
    });
    json.Objects("tables", meta.tables,
                 [&](JsonObject& object, const compiled::CompiledTable& table) {
                   WriteTable(object, table, raw);
                 });
  });
}

}  // namespace rux::inspect
