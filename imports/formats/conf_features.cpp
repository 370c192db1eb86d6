#include "imports/formats/conf_features.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "imports/board.h"
#include "lists/formats.h"
#include "lists/list.h"
#include "ruxcomp/language/entries.h"

namespace rux::imports {
namespace {

// Features by what their names begin with, before a number: "in0", "cpu0_vid".
struct FeatureRow {
  std::string_view prefix;
  std::string_view suffix;
  Quantity quantity;
};
constexpr FeatureRow kFeatures[] = {
    {"in", "", Quantity::kVoltage},        {"temp", "", Quantity::kTemperature},
    {"fan", "", Quantity::kFan},           {"power", "", Quantity::kPower},
    {"curr", "", Quantity::kCurrent},      {"energy", "", Quantity::kEnergy},
    {"humidity", "", Quantity::kHumidity}, {"cpu", "_vid", Quantity::kVoltage},
    {"intrusion", "", Quantity::kOther}};

}  // namespace

ConfName ConfNameOf(const std::string& name) {
  const std::size_t number = name.find_first_of("0123456789");
  const std::size_t end = std::min(name.find_first_not_of("0123456789", number), name.size());
  if (number != std::string::npos) {
    for (const FeatureRow& row : kFeatures) {
      if (name.compare(0, number, row.prefix) != 0) continue;
      if (name.compare(end, row.suffix.size(), row.suffix) != 0) continue;
      const std::string rest = name.substr(end + row.suffix.size());
      if (rest.empty()) return {name, "", row.quantity};
      if (rest.front() == '_')
        return {name.substr(0, name.size() - rest.size()), rest.substr(1), row.quantity};
    }
  }
  return {name, "", {}};
}

// The limits of lm-sensors are those of the lists that it prints.
std::optional<language::EntryId> LimitFor(std::string_view attribute) {
  for (const lists::Meaning& meaning : lists::FormatFor("sensors", "").meanings) {
    if (meaning.name == attribute && meaning.entry != language::ENTRY_NAME) return meaning.entry;
  }
  return std::nullopt;
}

bool IsOtherLimit(std::string_view attribute) {
  constexpr std::string_view kHysteresis = "_hyst";
  return attribute == "emergency" ||
         (attribute.size() > kHysteresis.size() &&
          attribute.substr(attribute.size() - kHysteresis.size()) == kHysteresis);
}

}  // namespace rux::imports
