#include "inspect/entry_value.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/datum.h"
#include "compiled/meta.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/symbols.h"
#include "support/json.h"
#include "support/safe_text.h"
#include "support/utf8.h"
#include "support/wrap.h"

namespace rux::inspect {
namespace {

namespace language = ruxcomp::language;

bool HasTopBit(std::uint32_t number) { return number >> 31 != 0; }

// Among the parts of a value, where one form has to do: small numbers in decimal, as scripts most
// often write counts and limits. A number that may have a sign looks the same everywhere.
std::string InnerNumberText(std::uint32_t number, bool is_address) {
  if (HasTopBit(number) && !is_address) return NumberText(number);
  const std::uint32_t last_decimal = is_address ? 9 : 999;
  return number <= last_decimal ? std::to_string(number) : fmt::format("0x{:X}", number);
}

bool IsLiteral(const std::string& written) {
  return language::IsHexadecimal(written) ||
         written.find_first_not_of("-+0123456789") == std::string::npos;
}

std::string OuterNumberText(const compiled::Datum& datum) {
  if (!datum.name.empty()) {
    const std::string id =
        datum.written.empty() ? fmt::format("0x{:X}", datum.number) : datum.written;
    return support::SafeText(id) + ' ' + support::NameText(datum.name);
  }
  if (datum.written.empty()) return NumberText(datum.number);
  const std::string written = support::SafeText(datum.written);
  return IsLiteral(datum.written) ? written : written + " = " + NumberText(datum.number);
}

// By itself.
std::string OuterText(const compiled::Datum& datum) {
  if (datum.row == nullptr) return "(unresolved)";
  if (datum.IsNumber() && (!datum.Is(language::CLASS_ValueType) || !datum.written.empty()))
    return OuterNumberText(datum);
  if (datum.Is(language::CLASS_ValueType)) return fmt::format("type {}", datum.number);
  return support::SafeText(datum.text);
}

template <class Text>
std::vector<std::string> PiecesOf(const std::vector<compiled::Datum>& items, Text text) {
  std::vector<std::string> pieces;
  pieces.reserve(items.size());
  for (const compiled::Datum& item : items) support::AddToList(pieces, text(item));
  return pieces;
}

std::vector<std::string> NamedPartPieces(const EntryPart& part) {
  std::vector<std::string> pieces = PiecesOf(
      part.items, [&](const compiled::Datum& datum) { return ItemText(datum, part.is_address); });
  if (pieces.empty()) pieces.emplace_back();
  pieces.front().insert(0, part.name + (part.is_list ? "=[" : "="));
  if (part.is_list) pieces.back() += ']';
  return pieces;
}

std::string BriefItem(const compiled::Datum& datum) {
  if (!datum.name.empty()) return OuterText(datum);
  const bool is_bare = datum.IsNumber() && datum.written.empty() && !HasTopBit(datum.number);
  return is_bare ? std::to_string(datum.number) : ItemText(datum, false);
}

std::string TypeText(const EntryValue& value) {
  return value.written_type.empty() ? fmt::format("type {}", *value.type)
                                    : support::NameText(value.written_type);
}

std::string Joined(const std::vector<std::string>& pieces) {
  std::string text;
  for (const std::string& piece : pieces) text += (text.empty() ? "" : " ") + piece;
  return text;
}

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

// Short, and clear of what separates the parts of a value.
std::string ItemText(const compiled::Datum& datum, bool is_address) {
  if (datum.row == nullptr) return "(unresolved)";
  if (!datum.written.empty()) return support::NameText(datum.written);
  if (datum.IsNumber()) return InnerNumberText(datum.number, is_address);
  return datum.Is(language::CLASS_Operator) ? '"' + datum.text + '"'
                                            : support::NameText(datum.text);
}

EntryPart TypePart(const EntryValue& value) {
  compiled::Datum type = compiled::NumberDatum(*value.type);
  type.written = value.written_type;
  return {"Type", false, {type}};
}

std::vector<compiled::Datum> ItemsOf(const EntryValue& value) {
  std::vector<compiled::Datum> items;
  if (value.type) {
    items = TypePart(value).items;
    items.front().row = language::FindClass(language::CLASS_ValueType);
  }
  for (const EntryPart& part : value.parts) {
    items.insert(items.end(), part.items.begin(), part.items.end());
  }
  return items;
}

std::vector<std::string> PartPieces(const EntryPart& part) {
  if (part.items.empty()) return {"(none)"};
  return PiecesOf(part.items, OuterText);
}

std::string PartText(const EntryPart& part) { return Joined(PartPieces(part)); }

std::vector<std::string> ValuePieces(const EntryValue& value) {
  std::vector<std::string> pieces;
  if (value.type) pieces.push_back(TypeText(value) + (value.parts.empty() ? "" : ":"));
  for (const EntryPart& part : value.parts) {
    const std::vector<std::string> more =
        part.name.empty() ? PartPieces(part) : NamedPartPieces(part);
    pieces.insert(pieces.end(), more.begin(), more.end());
  }
  if (pieces.empty()) pieces.emplace_back("(none)");
  return pieces;
}

std::string ValueText(const EntryValue& value) { return Joined(ValuePieces(value)); }

std::vector<std::string> BriefPieces(const std::string& key, const EntryValue& value) {
  const bool is_plain = value.parts.size() == 1 && value.parts.front().name.empty();
  std::vector<std::string> pieces =
      is_plain ? PiecesOf(value.parts.front().items, BriefItem) : ValuePieces(value);
  if (pieces.empty()) pieces.emplace_back();
  pieces.front().insert(0, support::SafeText(key) + '=');
  return pieces;
}

std::string CellsText(const compiled::TableCells& cells) {
  std::string text;
  for (std::size_t first = 0; first < cells.size();) {
    std::size_t last = first;
    while (last + 1 < cells.size() && cells[last + 1] == cells[first]) ++last;
    const std::string range =
        first == last ? std::to_string(first) : fmt::format("{}..{}", first, last);
    text += fmt::format("{:<8}  {}\n", range, NumberText(cells[first]));
    first = last + 1;
  }
  return text;
}

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
  if (!datum.written.empty()) json.Member("written", datum.written);
  if (!datum.name.empty()) json.Member("name", datum.name);
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
  if (!value.written_type.empty()) json.Member("written_type", value.written_type);
  json.Objects("parts", value.parts, WritePart);
}

}  // namespace rux::inspect
