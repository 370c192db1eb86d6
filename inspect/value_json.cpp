#include "inspect/value_json.h"

#include <fmt/format.h>

namespace rux::inspect {
namespace {

std::string HexOf(std::string_view bytes) {
  std::string hex;
  for (const char byte : bytes) hex += fmt::format("{:02X}", static_cast<unsigned char>(byte));
  return hex;
}

const char* ClassName(compiled::Datum::Class is) {
  switch (is) {
    case compiled::Datum::Class::kNumber:
      return "number";
    case compiled::Datum::Class::kString:
      return "string";
    case compiled::Datum::Class::kGroup:
      return "group";
    case compiled::Datum::Class::kAction:
      return "action";
    case compiled::Datum::Class::kTable:
      return "table";
    case compiled::Datum::Class::kValue:
      return "value";
    case compiled::Datum::Class::kGlobal:
      return "global";
    case compiled::Datum::Class::kName:
      return "name";
    case compiled::Datum::Class::kArgument:
      return "argument";
    case compiled::Datum::Class::kOperator:
      return "operator";
    case compiled::Datum::Class::kType:
      return "type";
    case compiled::Datum::Class::kUnresolved:
      return "unresolved";
  }
  return "";
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
  json.Key("class").String(ClassName(datum.is));
  switch (datum.is) {
    case compiled::Datum::Class::kNumber:
    case compiled::Datum::Class::kArgument:
    case compiled::Datum::Class::kType:
      json.Key("value").Number(datum.number);
      break;
    case compiled::Datum::Class::kUnresolved:
      json.Key("value").Null();
      break;
    default:
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

}  // namespace rux::inspect
