#include "inspect/value_json.h"

#include "support/safe_text.h"

namespace rux::inspect {
namespace {

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

void WriteValues(support::JsonObject& json, const EntryPart& part) {
  json.Objects("values", part.items, WriteDatum);
}

}  // namespace

void WriteText(support::JsonObject& json, std::string_view member, std::string_view text) {
  json.Member(member, text);
  if (!support::IsUtf8(text)) json.Member("hex", support::Hex(text));
}

void WriteDatum(support::JsonObject& json, const compiled::Datum& datum) {
  json.Member("class", ClassName(datum.is));
  switch (datum.is) {
    case compiled::Datum::Class::kNumber:
    case compiled::Datum::Class::kArgument:
    case compiled::Datum::Class::kType:
      json.Member("value", datum.number);
      break;
    case compiled::Datum::Class::kUnresolved:
      json.Member("value", nullptr);
      break;
    default:
      WriteText(json, "value", datum.text);
  }
}

void WritePart(support::JsonObject& json, const EntryPart& part) {
  json.Member("name", part.name);
  WriteValues(json, part);
}

void WriteEntry(support::JsonObject& json, const std::string& name, const EntryValue& value) {
  WriteText(json, "name", name);
  if (value.parts.size() == 1 && value.parts.front().name.empty()) {
    WriteValues(json, value.parts.front());
    return;
  }
  if (value.type) json.Member("type", *value.type);
  json.Objects("parts", value.parts, WritePart);
}

}  // namespace rux::inspect
