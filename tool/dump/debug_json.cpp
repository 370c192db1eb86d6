// A debug meta file for programs.
#include "tool/compiled/keywords.h"
#include "tool/dump/debug_text.h"
#include "tool/dump/dump.h"

namespace rux {
namespace {

Json FilesJson(const DebugMeta& meta) {
  Json files = Json::array();
  for (const std::string& file : meta.files) PutText(files.emplace_back(), "path", file);
  return files;
}

Json WordsJson(const DebugMeta& meta, const RawJson& raw) {
  Json words = Json::array();
  for (const DebugWord& word : meta.words) {
    Json& json = words.emplace_back();
    PutText(json, "name", word.name);
    json["value"] = word.value;
    raw.Put(json, word.pieces);
  }
  return words;
}

// What sections and entries have in common.
Json ObjectJson(const DebugObject& object) {
  Json json;
  PutText(json, "name", object.name);
  json["identifier"] = object.identifier;
  json["notation"] = object.notation;
  json["notation_names"] = NotationNames(object.notation);
  json["file"] = object.file_index;
  json["line"] = object.line;
  return json;
}

Json PartsJson(const DebugEntry& entry) {
  Json parts = Json::array();
  for (const DebugField& field : entry.fields) {
    Json part = {{"name", field.name}, {"list", field.is_list}, {"values", Json::array()}};
    for (const std::string& text : field.texts) {
      PutText(part["values"].emplace_back(), "value", text);
    }
    parts.push_back(part);
  }
  return parts;
}

Json EntryJson(const DebugEntry& entry, const RawJson& raw) {
  Json json = ObjectJson(entry);
  json["keyword"] = SourceEntryKeyword(entry.identifier);
  json["given"] = entry.payload_type != 0;
  if (entry.payload_type != 0) {
    const PayloadClass payload = PayloadClassOf(entry.payload_type);
    if (payload == PayloadClass::kNumber) json["number"] = entry.number;
    if (payload == PayloadClass::kValue) json["type"] = entry.value_type;
    if (payload != PayloadClass::kNumber) json["parts"] = PartsJson(entry);
  }
  raw.Put(json, entry.pieces);
  return json;
}

Json SectionJson(const DebugSection& section, std::size_t ordinal, const RawJson& raw) {
  Json json = ObjectJson(section);
  json["ordinal"] = ordinal;
  raw.Put(json, section.pieces);
  Json& entries = json["entries"] = Json::array();
  for (const DebugEntry& entry : section.entries) entries.push_back(EntryJson(entry, raw));
  return json;
}

}  // namespace

Json DebugMetaJson(const std::string& path, const DebugMeta& meta, const RawJson& raw) {
  Json json = TitleJson(path, Form::kDebugMeta, meta.version, meta.creation_time);
  std::vector<Piece> pieces = meta.header;
  pieces.push_back({"defined word count", meta.word_count});
  pieces.push_back({"kind count", meta.kind_count});
  raw.Put(json, pieces);
  json["files"] = meta.files_extent.size == 0 ? Json() : FilesJson(meta);
  json["words"] = WordsJson(meta, raw);
  Json& kinds = json["kinds"] = Json::array();
  for (std::size_t i = 0; i < meta.kinds.size(); ++i) {
    Json& kind = kinds.emplace_back();
    raw.Put(kind, {{"section count", meta.section_counts[i]}});
    Json& sections = kind["sections"] = Json::array();
    for (const DebugSection& section : meta.kinds[i]) {
      sections.push_back(SectionJson(section, sections.size(), raw));
    }
  }
  return json;
}

}  // namespace rux
