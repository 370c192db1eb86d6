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
void WriteValues(JsonObject& json, const compiled::CompiledMeta& meta,
                 const std::vector<std::uint32_t>& words) {
  json.Objects("values", words, [&](JsonObject& value, std::uint32_t word) {
    WriteDatum(value, compiled::Resolve(meta, word));
    value.Member("word", word);
  });
}

void WriteEntry(JsonObject& json, const compiled::CompiledMeta& meta,
                const compiled::CompiledSection& section, const compiled::CompiledEntry& entry,
                const RawJson& raw) {
  WriteText(json, "name", compiled::KeyOf(meta, section, entry));
  json.Member("identifier", entry.identifier);
  WriteValues(json, meta, entry.values);
  raw.Write(json, entry.pieces);
}

void WriteSection(JsonObject& json, const compiled::CompiledMeta& meta,
                  const compiled::CompiledSection& section, std::size_t ordinal,
                  const RawJson& raw) {
  json.Member("kind", ruxcomp::language::FindCompiledKind(section.identifier)->keyword);
  json.Member("ordinal", ordinal);
  json.Member("identifier", section.identifier);
  raw.Write(json, section.pieces);
  json.Objects("entries", section.entries,
               [&](JsonObject& object, const compiled::CompiledEntry& entry) {
                 WriteEntry(object, meta, section, entry, raw);
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
      std::map<std::uint32_t, std::size_t> counts;
      for (const compiled::CompiledSection& section : meta.sections) {
        const std::size_t ordinal = counts[section.identifier]++;
        const auto kind = ruxcomp::language::FindCompiledKind(section.identifier)->source;
        if (!selection.Has(kind, ordinal)) continue;
        list.Object([&](JsonObject& object) { WriteSection(object, meta, section, ordinal, raw); });
      }
    });
    json.Objects("tables", meta.tables,
                 [&](JsonObject& object, const compiled::CompiledTable& table) {
                   WriteTable(object, table, raw);
                 });
  });
}

}  // namespace rux::inspect
