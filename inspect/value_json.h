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
#ifndef INSPECT_VALUE_JSON_H_
#define INSPECT_VALUE_JSON_H_

#include <string>
#include <string_view>
#include <vector>

#include "compiled/file.h"
#include "inspect/entry_value.h"
#include "support/json_text.h"

namespace rux::inspect {

// Members of the object that was opened last.
void WriteText(support::JsonWriter& json, std::string_view member, std::string_view text);
void WriteDatum(support::JsonWriter& json, const compiled::Datum& datum);

// A part and an entry.
void WritePart(support::JsonWriter& json, const EntryPart& part);
void WriteEntry(support::JsonWriter& json, const std::string& name, const EntryValue& value);

// The bytes of a file, for dumps that are to show them.
class RawJson {
 public:
  // `bytes` is the whole file; it must outlive this. Without `wanted`, nothing is written.
  RawJson(std::string_view bytes, bool wanted) : bytes_(bytes), wanted_(wanted) {}

  // Into the object that was opened last:
  // "raw": [{"field": name, "offset": number, "size": number, "bytes": hex}, ...]
  void Write(support::JsonWriter& json, const std::vector<compiled::Piece>& pieces) const;

 private:
  const std::string_view bytes_;
  const bool wanted_;
};

}  // namespace rux::inspect

#endif  // INSPECT_VALUE_JSON_H_
