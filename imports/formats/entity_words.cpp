#include "imports/formats/entity_words.h"

#include <cstddef>
#include <optional>
#include <string_view>

#include "imports/board.h"

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

}  // namespace

std::optional<Quantity> QuantityOfEntry(std::string_view type, std::string_view units) {
  const std::optional<Quantity> quantity = QuantityFor(kTypes, type);
  return quantity ? quantity : QuantityFor(kUnitsKinds, units);
}

Quantity QuantityOfLabel(std::string_view label) {
  const std::string_view stem = label.substr(0, label.find_last_not_of("0123456789") + 1);
  return QuantityFor(kLabelKinds, stem).value_or(Quantity::kOther);
}

}  // namespace rux::imports
