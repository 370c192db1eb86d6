#include "inspect/value_json.h"

#include <fmt/format.h>

namespace rux {
namespace {

std::string HexOf(std::string_view bytes) {
  std::string hex;
  for (const char byte : bytes) hex += fmt::format("{:02X}", static_cast<unsigned char>(byte));
  return hex;
}

const char* ClassName(Datum::Class is) {
  switch (is) {
    case Datum::Class::kNumber:
      return "number";
    case Datum::Class::kString:
      return "string";
    case Datum::Class::kGroup:
      return "group";
    case Datum::Class::kAction:
      return "action";
    case Datum::Class::kTable:
      return "table";
    case Datum::Class::kValue:
      return "value";
    case Datum::Class::kGlobal:
      return "global";
    case Datum::Class::kName:
      return "name";
    case Datum::Class::kArgument:
      return "argument";
    case Datum::Class::kOperator:
      return "operator";
    case Datum::Class::kType:
      return "type";
    case Datum::Class::kUnresolved:
      return "unresolved";
  }
  return "";
}

void WriteValues(JsonWriter& json, const EntryPart& part) {
  json.Key("values").Open('[');
  for (const Datum& item : part.items) {
    WriteDatum(json.Open('{'), item);
    json.Close();
  }
  json.Close();
}

}  // namespace

void WriteText(JsonWriter& json, std::string_view member, std::string_view text) {
  json.Key(member).String(text);
  if (!IsUtf8(text)) json.Key("hex").String(HexOf(text));
}

void WriteDatum(JsonWriter& json, const Datum& datum) {
  json.Key("class").String(ClassName(datum.is));
  switch (datum.is) {
    case Datum::Class::kNumber:
    case Datum::Class::kArgument:
    case Datum::Class::kType:
      json.Key("value").Number(datum.number);
      break;
    case Datum::Class::kUnresolved:
      json.Key("value").Null();
      break;
    default:
      WriteText(json, "value", datum.text);
  }
}

void WritePart(JsonWriter& json, const EntryPart& part) {
  json.Open('{').Key("name").String(part.name);
  WriteValues(json, part);
  json.Close();
}

void WriteEntry(JsonWriter& json, const std::string& name, const EntryValue& value) {
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

}  // namespace rux
