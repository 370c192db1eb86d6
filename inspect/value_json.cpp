#include "inspect/value_json.h"

#include <fmt/format.h>

namespace rux::inspect {
namespace {

namespace language = ruxcomp::language;

std::string HexOf(std::string_view bytes) {
  std::string hex;
  for (const char byte : bytes) hex += fmt::format("{:02X}", static_cast<unsigned char>(byte));
  return hex;
}

// Programs need not tell properties from repeaters.
const char* ClassName(const compiled::Datum& datum) {
  if (datum.row == nullptr) return "unresolved";
  const bool is_name = datum.Is(language::CLASS_Property) || datum.Is(language::CLASS_Repeater);
  return is_name ? "name" : datum.row->title;
}

void WriteValues(support::JsonWriter& json, const EntryPart& part) {
  json.Key("values").Open('[');
  for (const compiled::Datum& item : part.items) {
    WriteDatum(json.Open('{'), item);
    json.Close();
  }
  json.Close();
}

}  // namespace

void WriteText(support::JsonWriter& json, std::string_view member, std::string_view text) {
  json.Key(member).String(text);
  if (!support::IsUtf8(text)) json.Key("hex").String(HexOf(text));
}

void WriteDatum(support::JsonWriter& json, const compiled::Datum& datum) {
  json.Key("class").String(ClassName(datum));
  if (datum.row == nullptr) {
    json.Key("value").Null();
  } else if (datum.IsNumber() || datum.Is(language::CLASS_Small)) {
    json.Key("value").Number(datum.number);
  } else {
    WriteText(json, "value", datum.text);
  }
}

void WritePart(support::JsonWriter& json, const EntryPart& part) {
  json.Open('{').Key("name").String(part.name);
  WriteValues(json, part);
  json.Close();
}

void WriteEntry(support::JsonWriter& json, const std::string& name, const EntryValue& value) {
  WriteText(json.Open('{'), "name", name);
  if (value.parts.size() == 1 && value.parts.front().name.empty()) {
    WriteValues(json, value.parts.front());
  } else {
    if (value.type) json.Key("type").Number(*value.type);
    json.Key("parts").Open('[');
    for (const EntryPart& part : value.parts) WritePart(json, part);
    json.Close();
  }
  json.Close();
}

void RawJson::Write(support::JsonWriter& json, const std::vector<compiled::Piece>& pieces) const {
  if (!wanted_) return;
  json.Key("raw").Open('[');
  for (const compiled::Piece& piece : pieces) {
    json.Open('{').Key("field").String(piece.name);
    json.Key("offset").Number(piece.extent.offset).Key("size").Number(piece.extent.size);
    json.Key("bytes").String(HexOf(bytes_.substr(piece.extent.offset, piece.extent.size)));
    json.Close();
  }
  json.Close();
}

}  // namespace rux::inspect
