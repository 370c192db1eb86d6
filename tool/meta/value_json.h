// Values for programs.
//
//   text        any text stands as a string member; when its bytes are no UTF-8, the string holds
//               replacement characters and the same object gets a member "hex" with the exact bytes
//   value       {"class": CLASS, "value": number, text or null}
//   CLASS       number, string, group, action, table, value, global, name, argument (its number),
//               operator (its text), type (its number), unresolved (null)
//   part        {"name": text, "values": [value, ...]}
//   entry       {"name": text, "values": [...]}, or for value, global and repeater entries
//               {"name": text, "type": number, "parts": [part, ...]}; repeaters have no type
#ifndef TOOL_META_VALUE_JSON_H_
#define TOOL_META_VALUE_JSON_H_

#include <nlohmann/json.hpp>
#include <string>

#include "tool/meta/entry_value.h"

namespace rux {

using Json = nlohmann::ordered_json;

void PutText(Json& object, const char* member, const std::string& text);

Json PartJson(const EntryPart& part);
Json EntryJson(const std::string& name, const EntryValue& value);

// The text of a document, with a line feed at its end.
std::string JsonText(const Json& document);

}  // namespace rux

#endif  // TOOL_META_VALUE_JSON_H_
