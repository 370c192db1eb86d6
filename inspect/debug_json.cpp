// A debug meta file for programs.
#include "inspect/debug_text.h"
#include "inspect/dump.h"
#include "inspect/value_json.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"

namespace rux::inspect {
namespace {

void WriteFiles(support::JsonWriter& json, const compiled::DebugMeta& meta) {
  json.Key("files");
  if (meta.files_extent.size == 0) {
    json.Null();
    return;
  }
  json.Open('[');
  for (const std::string& file : meta.files) {
    WriteText(json.Open('{'), "path", file);
    json.Close();
  }
  json.Close();
}

void WriteWords(support::JsonWriter& json, const compiled::DebugMeta& meta, const RawJson& raw) {
  json.Key("words").Open('[');
  for (const compiled::DebugWord& word : meta.words) {
    WriteText(json.Open('{'), "name", word.name);
    json.Key("value").Number(word.value);
    raw.Write(json, word.pieces);
    json.Close();
  }
  json.Close();
}

// What sections and entries have in common.
void WriteObject(support::JsonWriter& json, const compiled::DebugObject& object) {
  WriteText(json, "name", object.name);
  json.Key("identifier").Number(object.identifier).Key("notation").Number(object.notation);
  json.Key("notation_names").Open('[');
  for (const std::string& name : NotationNames(object.notation)) json.String(name);
  json.Close();
  json.Key("file").Number(object.file_index).Key("line").Number(object.line);
}

void WriteParts(support::JsonWriter& json, const compiled::DebugEntry& entry) {
  json.Key("parts").Open('[');
  for (const compiled::DebugField& field : entry.fields) {
    json.Open('{').Key("name").String(field.name).Key("list").Bool(field.is_list);
    json.Key("values").Open('[');
    for (const std::string& text : field.texts) {
      WriteText(json.Open('{'), "value", text);
      json.Close();
    }
    json.Close().Close();
  }
  json.Close();
}

void WriteEntry(support::JsonWriter& json, const compiled::DebugEntry& entry, const RawJson& raw) {
  WriteObject(json.Open('{'), entry);
  json.Key("keyword").String(ruxcomp::language::FindEntryRow(entry.identifier)->keyword);
  json.Key("given").Bool(entry.payload_type != 0);
  if (entry.payload_type != 0) {
    const std::uint32_t payload = ruxcomp::language::PayloadOf(entry.payload_type);
    if (payload == ruxcomp::language::PAYLOAD_DWORD) json.Key("number").Number(entry.number);
    if (payload == ruxcomp::language::PAYLOAD_VALUE) json.Key("type").Number(entry.value_type);
    if (payload != ruxcomp::language::PAYLOAD_DWORD) WriteParts(json, entry);
  }
  raw.Write(json, entry.pieces);
  json.Close();
}

void WriteSection(support::JsonWriter& json, const compiled::DebugSection& section,
                  std::size_t ordinal, const RawJson& raw) {
  WriteObject(json.Open('{'), section);
  json.Key("ordinal").Number(ordinal);
  raw.Write(json, section.pieces);
  json.Key("entries").Open('[');
  for (const compiled::DebugEntry& entry : section.entries) WriteEntry(json, entry, raw);
  json.Close().Close();
}

void WriteKind(support::JsonWriter& json, const std::vector<compiled::DebugSection>& sections,
               const compiled::Piece& count, const RawJson& raw) {
  raw.Write(json.Open('{'), {count});
  json.Key("sections").Open('[');
  std::size_t ordinal = 0;
  for (const compiled::DebugSection& section : sections)
    WriteSection(json, section, ordinal++, raw);
  json.Close().Close();
}

}  // namespace

std::string DebugMetaJson(const std::string& path, const compiled::DebugMeta& meta,
                          const RawJson& raw) {
  support::JsonWriter json;
  WriteTitle(json.Open('{'), path, compiled::Form::kDebugMeta, meta.version, meta.creation_time);
  std::vector<compiled::Piece> pieces = meta.header;
  pieces.push_back({"defined word count", meta.word_count});
  pieces.push_back({"kind count", meta.kind_count});
  raw.Write(json, pieces);
  WriteFiles(json, meta);
  WriteWords(json, meta, raw);
  json.Key("kinds").Open('[');
  for (std::size_t i = 0; i < meta.kinds.size(); ++i) {
    WriteKind(json, meta.kinds[i], {"section count", meta.section_counts[i]}, raw);
  }
  return json.Close().Close().TakeText();
}

}  // namespace rux::inspect
