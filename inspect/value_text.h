// Values as text.
#ifndef INSPECT_VALUE_TEXT_H_
#define INSPECT_VALUE_TEXT_H_

#include <string>

#include "inspect/entry_value.h"

namespace rux::inspect {

// One line: "85 (0x55)", "CPUS", "257 (0x101), 258 (0x102)", or
// "type 5: Operand=0x2E Number=8 BusType=1 BaseAddress=0 Args=[G_FAN_MAX, 3]".
std::string ValueText(const EntryValue& value);

// The same for one part by itself.
std::string PartText(const EntryPart& part);

// The cells of a table, a line for each stretch of equal ones: "0x00..0x1F  40 (0x28)".
std::string CellsText(const compiled::TableCells& cells);

}  // namespace rux::inspect

#endif  // INSPECT_VALUE_TEXT_H_
