// Values as JSON.
//
//   text        any text is a string member; when its bytes are not UTF-8, the string holds
//               replacement characters and the same object gets a member "hex" with the exact bytes
//   value       {"class": CLASS, "value": number, text or null}
//   CLASS       number, string, group, action, table, value, global, name, argument (its number),
//               operator (its text), type (its number), unresolved (null)
//   part        {"name": text, "values": [value, ...]}
//   entry       {"name": text, "values": [...]}, or for value, global and repeater entries
//               {"name": text, "type": number, "parts": [part, ...]}; repeaters have no type
#ifndef INSPECT_VALUE_JSON_H_
#define INSPECT_VALUE_JSON_H_

#include <string>
#include <string_view>

#include "inspect/entry_value.h"
#include "support/json.h"

namespace rux::inspect {

// Members of the object.
void WriteText(support::JsonObject& json, std::string_view member, std::string_view text);
void WriteDatum(support::JsonObject& json, const compiled::Datum& datum);

// The members of a part and of an entry.
void WritePart(support::JsonObject& json, const EntryPart& part);
void WriteEntry(support::JsonObject& json, const std::string& name, const EntryValue& value);

}  // namespace rux::inspect

#endif  // INSPECT_VALUE_JSON_H_
