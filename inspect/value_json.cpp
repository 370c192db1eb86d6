#include "inspect/value_json.h"

#include <string>

#include "compiled/datum.h"
#include "inspect/entry_value.h"
#include "support/json.h"
#include "support/safe_text.h"
#include "support/utf8.h"

namespace rux::inspect {
namespace {

namespace language = ruxcomp::language;

// Programs need not distinguish properties from repeaters.
const char* ClassName(const compiled::Datum& datum) {
  if (datum.row == nullptr) return "unresolved";
  const bool is_name = datum.Is(language::CLASS_Property) || datum.Is(language::CLASS_Repeater);
  return is_name ? "name" : datum.row->title;
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
  json.Member("class", ClassName(datum));
  if (datum.row == nullptr) {
    json.Member("value", nullptr);
  } else if (datum.IsNumber() || datum.Is(language::CLASS_Small)) {
    json.Member("value", datum.number);
  } else {
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
