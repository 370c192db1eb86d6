#include "inspect/value_text.h"

#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <vector>

#include "compiled/datum.h"
#include "compiled/meta.h"
#include "inspect/entry_value.h"
#include "support/safe_text.h"

namespace rux::inspect {
namespace {

namespace language = ruxcomp::language;

// Among the parts of a value: short, and clear of what separates them.
std::string InnerText(const compiled::Datum& datum) {
  if (datum.row == nullptr) return "(unresolved)";
  if (datum.IsNumber()) return fmt::format(datum.number < 10 ? "{}" : "0x{:X}", datum.number);
  return datum.Is(language::CLASS_Operator) ? datum.text : support::NameText(datum.text);
}

// By itself.
std::string OuterText(const compiled::Datum& datum) {
  if (datum.row == nullptr) return "(unresolved)";
  if (datum.Is(language::CLASS_ValueType)) return fmt::format("type {}", datum.number);
  if (datum.IsNumber()) return fmt::format("{0} (0x{0:X})", datum.number);
  return support::SafeText(datum.text);
}

template <class Text>
std::string Joined(const std::vector<compiled::Datum>& items, Text text) {
  std::string joined;
  for (const compiled::Datum& item : items) joined += (joined.empty() ? "" : ", ") + text(item);
  return joined;
}

std::string NamedPartText(const EntryPart& part) {
  const std::string items = Joined(part.items, InnerText);
  return part.name + (part.is_list ? "=[" + items + "]" : "=" + items);
}

}  // namespace

std::string PartText(const EntryPart& part) {
  return part.items.empty() ? "(none)" : Joined(part.items, OuterText);
}

std::string ValueText(const EntryValue& value) {
  std::string text;
  if (value.type) {
    text = fmt::format("type {}", *value.type) + (value.parts.empty() ? "" : ":");
  }
  for (const EntryPart& part : value.parts) {
    if (!text.empty()) text += ' ';
    text += part.name.empty() ? PartText(part) : NamedPartText(part);
  }
  return text.empty() ? "(none)" : text;
}

std::string CellsText(const compiled::TableCells& cells) {
  std::string text;
  for (std::size_t first = 0; first < cells.size();) {
    std::size_t last = first;
    while (last + 1 < cells.size() && cells[last + 1] == cells[first]) ++last;
    const std::string range = first == last ? fmt::format("0x{:02X}", first)
                                            : fmt::format("0x{:02X}..0x{:02X}", first, last);
    text += fmt::format("{:<10}  {} (0x{:X})\n", range, cells[first], cells[first]);
    first = last + 1;
  }
  return text;
}

}  // namespace rux::inspect
