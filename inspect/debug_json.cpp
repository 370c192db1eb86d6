// A debug meta file for programs.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "compiled/debug_meta.h"
#include "inspect/debug_text.h"
#include "inspect/dump.h"
#include "inspect/entry_value.h"
#include "inspect/section_list.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/file/views.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "support/json.h"
#include "support/text_stream.h"

namespace rux::inspect {
namespace {

using support::JsonArray;
using support::JsonObject;

void WriteFiles(JsonObject& json, const compiled::DebugMeta& meta) {
  if (meta.files_extent.size == 0) return json.Member("files", nullptr);
  json.Objects("files", meta.files, [](JsonObject& object, const std::string& file) {
    WriteText(object, "path", file);
  });
}

void WriteWords(JsonObject& json, const compiled::DebugMeta& meta, const RawJson& raw) {
  json.Objects("words", meta.words, [&](JsonObject& object, const compiled::DebugWord& word) {
    WriteText(object, "name", word.name);
    object.Member("value", word.value);
    raw.Write(object, word.pieces);
  });
}

// What sections and entries have in common.
void WriteObject(JsonObject& json, const compiled::DebugObject& object) {
  WriteText(json, "name", object.name);
  json.Member("identifier", object.identifier);
  json.Member("notation", object.notation);
  json.Array("notation_names",
             [&](JsonArray& names) { names.Items(NotationNames(object.notation)); });
  json.Member("file", object.file_index);
  json.Member("line", object.line);
}

// What is written of each section.
struct Written {
  const EntryTexts texts;
  const Selection& selection;
  const RawJson& raw;
};

void WriteParts(JsonObject& json, const Written& written, const compiled::DebugSection& section,
                const compiled::DebugEntry& entry) {
  json.Objects("parts", entry.fields, [&](JsonObject& part, const compiled::DebugField& field) {
    part.Member("name", field.name);
    part.Member("list", field.is_list);
    part.Objects("values", field.texts, [&](JsonObject& value, const std::string& text) {
      WriteText(value, "value", text);
      const std::string name = written.texts.NameFor(section, entry, text);
      if (!name.empty()) value.Member("name", name);
    });
  });
}

void WriteEntry(JsonObject& json, const Written& written, const compiled::DebugSection& section,
                const compiled::DebugEntry& entry) {
  WriteObject(json, entry);
  json.Member("keyword", ruxcomp::language::FindEntryRow(entry.identifier)->keyword);
  json.Member("given", entry.payload_type != 0);
  if (entry.payload_type != 0) {
    const std::uint32_t payload = ruxcomp::language::PayloadOf(entry.payload_type);
    const bool is_number = payload == ruxcomp::language::PAYLOAD_DWORD;
    if (is_number) json.Member("number", entry.number);
    if (payload == ruxcomp::language::PAYLOAD_VALUE) json.Member("type", entry.value_type);
    if (!is_number) WriteParts(json, written, section, entry);
  }
  written.raw.Write(json, entry.pieces);
}

void WriteSection(JsonObject& json, const Written& written, const compiled::DebugSection& section,
                  std::size_t ordinal) {
  WriteObject(json, section);
  json.Member("ordinal", ordinal);
  written.raw.Write(json, section.pieces);
  json.Objects("entries", section.entries,
               [&](JsonObject& object, const compiled::DebugEntry& entry) {
                 WriteEntry(object, written, section, entry);
               });
}

void WriteKind(JsonObject& json, const Written& written,
               const std::vector<compiled::DebugSection>& sections, const compiled::Piece& count) {
  written.raw.Write(json, {count});
  json.Array("sections", [&](JsonArray& list) {
    for (std::size_t i = 0; i < sections.size(); ++i) {
      const auto kind = ruxcomp::language::FindSourceKind(sections[i].identifier)->source;
      if (!written.selection.Has(kind, i)) continue;
      list.Object([&](JsonObject& object) { WriteSection(object, written, sections[i], i); });
    }
  });
}

void WriteKinds(JsonObject& json, const Written& written, const compiled::DebugMeta& meta) {
  std::size_t kind = 0;
  json.Objects(
      "kinds", meta.kinds,
      [&](JsonObject& object, const std::vector<compiled::DebugSection>& sections) {
        WriteKind(object, written, sections, {"section count", meta.section_counts[kind++]});
      });
}

}  // namespace

void WriteDebugMetaJson(const std::string& path, const compiled::DebugMeta& meta,
                        const Selection& selection, const RawJson& raw, support::TextStream& out) {
  support::WriteJson(out, [&](JsonObject& json) {
    WriteTitle(json, path, compiled::Form::kDebugMeta, meta.version, meta.creation_time);
    std::vector<compiled::Piece> pieces = meta.header;
    pieces.push_back({"defined word count", meta.word_count});
    pieces.push_back({"kind count", meta.kind_count});
    raw.Write(json, pieces);
    WriteFiles(json, meta);
    WriteWords(json, meta, raw);
    WriteKinds(json, {EntryTexts(meta), selection, raw}, meta);
  });
}

}  // namespace rux::inspect
