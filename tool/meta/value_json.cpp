#include "tool/meta/value_json.h"

#include <fmt/format.h>

namespace rux {
namespace {

bool IsUtf8(const std::string& text) {
  try {
    Json(text).dump();
    return true;
  } catch (const Json::type_error&) {
    return false;
  }
}

std::string HexOf(const std::string& bytes) {
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

Json DatumJson(const Datum& datum) {
  Json json = {{"class", ClassName(datum.is)}};
  switch (datum.is) {
    case Datum::Class::kNumber:
    case Datum::Class::kArgument:
    case Datum::Class::kType:
      json["value"] = datum.number;
      break;
    case Datum::Class::kUnresolved:
      json["value"] = nullptr;
      break;
    default:
      PutText(json, "value", datum.text);
  }
  return json;
}

Json ValuesJson(const EntryPart& part) {
  Json values = Json::array();
  for (const Datum& item : part.items) values.push_back(DatumJson(item));
  return values;
}

}  // namespace

void PutText(Json& object, const char* member, const std::string& text) {
  object[member] = text;
  if (!IsUtf8(text)) object["hex"] = HexOf(text);
}

Json PartJson(const EntryPart& part) { return {{"name", part.name}, {"values", ValuesJson(part)}}; }

Json EntryJson(const std::string& name, const EntryValue& value) {
  Json json;
  PutText(json, "name", name);
  if (value.parts.size() == 1 && value.parts.front().name.empty()) {
    json["values"] = ValuesJson(value.parts.front());
    return json;
  }
  if (value.type) json["type"] = *value.type;
  json["parts"] = Json::array();
  for (const EntryPart& part : value.parts) {
    json["parts"].push_back(PartJson(part));
  }
  return json;
}

std::string JsonText(const Json& document) {
  constexpr int kIndent = 2;
  return document.dump(kIndent, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace rux
