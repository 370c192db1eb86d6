// The values of a compiled entry, by the names of their parts: as text and as JSON.
// docs/get.schema.json describes the JSON.
#ifndef INSPECT_ENTRY_VALUE_H_
#define INSPECT_ENTRY_VALUE_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/datum.h"
#include "compiled/meta.h"
#include "machine/value.h"
#include "support/json.h"
#include "support/number_text.h"

namespace rux::inspect {

using machine::EntryPart;
using machine::EntryValue;
using machine::IsAddress;
using machine::KindOfCompiledIds;
using machine::KindOfIds;
using machine::ValueOf;

// The type as a part of the value, which has one.
EntryPart TypePart(const EntryValue& value);

// All values of the entry, one after the other, as a path counts them.
std::vector<compiled::Datum> ItemsOf(const EntryValue& value);

using support::NumberText;

// One line: "85 (0x55)", "CPUS", "257 (0x101), 258 (0x102)", or
// "type 5: Operand=0x2E Number=8 BusType=1 BaseAddress=0 Args=[G_FAN_MAX, 3]".
std::string ValueText(const EntryValue& value);

// The same in pieces between which a line may be broken at a blank.
std::vector<std::string> ValuePieces(const EntryValue& value);

// An item of a part among others, such as "0x2E" or "G_FAN_MAX". Of an address, numbers above 9 are
// hexadecimal.
std::string ItemText(const compiled::Datum& datum, bool is_address);

// The same for one part by itself.
std::string PartText(const EntryPart& part);
std::vector<std::string> PartPieces(const EntryPart& part);

// "THRESHOLD_FH=1200", "VALUE=type 5: Operand=...", "PID=0x10 CPUS": an entry among others in a
// line, in such pieces. Numbers are in decimal, which is what limits are compared in; IDs have
// their names.
std::vector<std::string> BriefPieces(const std::string& key, const EntryValue& value);

// The cells of a table, a line for each stretch of equal ones: "0..31  40 (0x28)".
std::string CellsText(const compiled::TableCells& cells);

// Members of the object.
void WriteText(support::JsonObject& json, std::string_view member, std::string_view text);
void WriteDatum(support::JsonObject& json, const compiled::Datum& datum);

// The members of a part and of an entry.
void WritePart(support::JsonObject& json, const EntryPart& part);
void WriteEntry(support::JsonObject& json, const std::string& name, const EntryValue& value);

}  // namespace rux::inspect

#endif  // INSPECT_ENTRY_VALUE_H_
