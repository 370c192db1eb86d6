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
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"
#include "support/json.h"

namespace rux::inspect {

struct EntryPart {
  std::string name;  // empty: the whole of an entry that has no named parts
  bool is_list;
  std::vector<compiled::Datum> items;
  bool is_address = false;  // of a register or a bus, for people in hexadecimal
};

struct EntryValue {
  std::optional<std::uint32_t> type;  // of a value or global entry
  std::vector<EntryPart> parts;
  std::string written_type = {};  // as the script wrote it; empty when that is not known
};

// The type as a part of the value, which has one.
EntryPart TypePart(const EntryValue& value);

// All values of the entry, one after the other, as a path counts them.
std::vector<compiled::Datum> ItemsOf(const EntryValue& value);

// Whether the part of a value of that type is where something is on a bus.
bool IsAddress(std::uint32_t type, std::string_view part);

// The kind of sections whose IDs an entry gives, both named by their identifiers in the source
// model; null when it gives none.
const ruxcomp::language::SectionKind* KindOfIds(std::uint32_t section, std::uint32_t entry);

// Value, global and repeater entries have the parts that the library's selectors pick; what no
// selector fits is one part "Values". All other entries are one nameless part.
EntryValue ValueOf(const ruxcomp::Entry& entry);

// "85 (0x55)"; with the top bit set, also the number that a script may have written with a sign:
// "4294967276 (0xFFFFFFEC, -20)".
std::string NumberText(std::uint32_t number);

// One line: "85 (0x55)", "CPUS", "257 (0x101), 258 (0x102)", or
// "type 5: Operand=0x2E Number=8 BusType=1 BaseAddress=0 Args=[G_FAN_MAX, 3]".
std::string ValueText(const EntryValue& value);

// The same in pieces between which a line may be broken at a blank.
std::vector<std::string> ValuePieces(const EntryValue& value);

// The same for one part by itself.
std::string PartText(const EntryPart& part);
std::vector<std::string> PartPieces(const EntryPart& part);

// "THRESHOLD_FH=1200", "VALUE=type 5: Operand=...": an entry among others in a line. Numbers are in
// decimal, which is what limits are compared in.
std::string BriefText(const std::string& key, const EntryValue& value);

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
