#include "imports/formats/entity_words.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "imports/board.h"
#include "imports/script_text.h"
#include "losses/ledger.h"
#include "support/ascii.h"

namespace rux::imports {
namespace {

// A word of a source that shows what is measured.
struct WordKind {
  std::string_view word;
  Quantity quantity;
};
// Types.
constexpr WordKind kTypes[] = {
#define KIND(type, quantity) {type, Quantity::k##quantity},
#include "imports/formats/entity_kinds.def"
};

// Labels, without the digits at their ends.
constexpr WordKind kLabelKinds[] = {
    {"in_voltage", Quantity::kVoltage}, {"in_current", Quantity::kCurrent},
    {"in_power", Quantity::kPower},     {"maxtemp", Quantity::kTemperature},
    {"maxpin", Quantity::kPower},       {"maxvin", Quantity::kVoltage},
    {"maxiout", Quantity::kCurrent},    {"voltage", Quantity::kVoltage},
    {"power", Quantity::kPower},        {"pout", Quantity::kPower},
    {"pin", Quantity::kPower},          {"curr", Quantity::kCurrent},
    {"iout", Quantity::kCurrent},       {"iin", Quantity::kCurrent},
    {"temp", Quantity::kTemperature},   {"fan", Quantity::kFan},
    {"vout", Quantity::kVoltage},       {"vmon", Quantity::kVoltage},
    {"vin", Quantity::kVoltage},        {"in", Quantity::kVoltage}};

// What Units says of sensors that are worked out.
constexpr WordKind kUnitsKinds[] = {{"DegreesC", Quantity::kTemperature},
                                    {"Volts", Quantity::kVoltage},
                                    {"Amperes", Quantity::kCurrent},
                                    {"Watts", Quantity::kPower},
                                    {"RPMS", Quantity::kFan},
                                    {"Percent", Quantity::kShare},
                                    {"PercentRH", Quantity::kHumidity},
                                    {"Pascals", Quantity::kPressure},
                                    {"Joules", Quantity::kEnergy}};

template <std::size_t kSize>
std::optional<Quantity> QuantityFor(const WordKind (&rows)[kSize], std::string_view word) {
  for (const WordKind& row : rows) {
    if (row.word == word) return row.quantity;
  }
  return std::nullopt;
}

constexpr std::string_view kDigits = "0123456789";

// 0 for all but the digits of a number of chips.
std::size_t NumberIn(std::string_view text) {
  constexpr std::size_t kMost = 4;
  std::size_t number = 0;
  if (text.size() > kMost) return 0;
  for (const char c : text) {
    if (!support::IsDigit(c)) return 0;
    number = number * 10 + static_cast<std::size_t>(c - '0');
  }
  return number;
}

}  // namespace

std::optional<Quantity> QuantityOfEntry(std::string_view type, std::string_view units,
                                        std::string_view sensor_type) {
  if (type == "IpmbSensor") {
    if (sensor_type.empty()) return Quantity::kTemperature;
    return sensor_type == "utilization" ? Quantity::kShare : FindQuantity(sensor_type);
  }
  const std::optional<Quantity> quantity = QuantityFor(kTypes, type);
  return quantity ? quantity : QuantityFor(kUnitsKinds, units);
}

std::optional<Quantity> QuantityOfLabel(std::string_view label) {
  return QuantityFor(kLabelKinds, label.substr(0, label.find_last_not_of(kDigits) + 1));
}

std::size_t NumberOfLabel(std::string_view label) {
  for (std::size_t i = 1; i < label.size(); ++i) {
    if (support::IsLetter(label[i - 1]) && support::IsDigit(label[i])) {
      const std::string_view rest = label.substr(i);
      return NumberIn(rest.substr(0, rest.find_first_not_of(kDigits)));
    }
  }
  return 0;
}

std::size_t NumberOfName(std::string_view key) {
  constexpr std::string_view kName = "Name";
  if (key.substr(0, kName.size()) != kName) return 0;
  if (key.size() == kName.size()) return 1;
  const std::size_t number = NumberIn(key.substr(kName.size()));
  return number == 0 ? 0 : number + 1;
}

void NoteTemplate(const Text& text, losses::Ledger& ledger) {
  const std::size_t at = text.text.find('$');
  if (at == std::string::npos || at + 1 == text.text.size()) return;
  if (!support::IsLetter(text.text[at + 1])) return;
  ledger.Changed(text.item, PlainText(text.text), losses::Reason::kTemplate);
}

}  // namespace rux::imports
