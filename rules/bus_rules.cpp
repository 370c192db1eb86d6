// Accesses to buses that are compiled differently from what their types need.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "rules/defined_words.h"
#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "rules/wording.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/values.h"
#include "support/safe_text.h"

namespace rux::rules {
namespace {

namespace messages = ruxcomp::findings::rows;

constexpr std::string_view kBusType = "BusType";

// The part of a value that is the field of that name; empty when there is none.
std::string_view PartOf(const ScriptItem& item, std::string_view name) {
  std::size_t part = item.first_field;
  for (const language::Field& field : item.record->fields) {
    if (name == field.name) return part < item.parts.size() ? item.parts[part] : std::string_view();
    ++part;
  }
  return {};
}

// However it is written: 0, 0x0 and a word for 0 are compiled alike.
bool IsSmbusAddress(std::string_view text, const DefinedWords& words) {
  return words.WordOrNumber(text) == language::ReadNumber(language::kSmbusBaseAddress).value;
}

bool IsSmbus(std::string_view text, const DefinedWords& words) {
  const std::optional<std::uint32_t> smbus = words.Find(language::kSmbus);
  return text == language::kSmbus || (smbus && words.WordOrNumber(text) == smbus);
}

constexpr std::string_view kBusTypePrefix = "BUSTYPE_";

// Of values that are accesses to a bus, all that the library accepts name its type.
bool LacksBusType(const ScriptItem& item) {
  const auto& fields = item.record->fields;
  const bool is_access = std::any_of(fields.begin(), fields.end(), [](const language::Field& each) {
    return each.name == kBusType;
  });
  return is_access && PartOf(item, kBusType).empty();
}

// Whether a part of a value is the bus type, or an argument, which may pass one on.
bool MayBeBusType(const language::ValueType& record, std::size_t field) {
  if (record.Has(language::kCountsArguments) && field >= record.TextCount()) return true;
  return field < record.fields.size() && record.fields[field].name == kBusType;
}

}  // namespace

void CheckMisplacedBusType(const ScriptItem& item, const RuleContext& context) {
  const bool is_value = language::PayloadOf(item.entry) == language::PAYLOAD_VALUE;
  if (is_value) {
    const bool has_known_parts = item.record != nullptr && !item.record->fields.empty();
    if (!has_known_parts || LacksBusType(item)) return;
  }
  for (std::size_t part = item.first_field; part < item.parts.size(); ++part) {
    const std::string_view text = item.parts[part];
    if (!language::HasPrefix(text, kBusTypePrefix) || !context.words.Find(text)) continue;
    if (is_value && MayBeBusType(*item.record, part - item.first_field)) continue;
    context.report.Add(
        RuleId::kMisplacedBusType, item,
        [&] { return fmt::format("{} is used where no bus type belongs", text); }, text);
  }
}

void CheckSmbus(const ScriptItem& item, const RuleContext& context) {
  if (item.record == nullptr || !item.record->Has(language::kOnlySmbus)) return;
  const std::string_view address = PartOf(item, "BaseAddress");
  const std::string_view type = PartOf(item, kBusType);
  // The library refuses values that lack them.
  if (address.empty() || type.empty()) return;
  const auto report = [&](const ruxcomp::findings::MessageRow& row, std::string_view found) {
    const auto text = [&] { return Worded(row, {{"found", support::Shortened(found)}}); };
    context.report.Add(row, item, text, found);
  };
  if (!IsSmbus(type, context.words)) report(messages::kSmbusBusType, type);
  if (!IsSmbusAddress(address, context.words)) report(messages::kSmbusAddress, address);
}

}  // namespace rux::rules
