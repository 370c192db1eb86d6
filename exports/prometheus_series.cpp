#include "exports/prometheus_series.h"

#include <string>
#include <string_view>
#include <vector>

#include "exports/amount.h"
#include "exports/sensors.h"
#include "support/utf8.h"

namespace rux::exports {
namespace {

std::string LabelValue(std::string_view text) {
  std::string value;
  while (!text.empty()) {
    const support::Character character = support::FirstCharacter(text);
    text.remove_prefix(character.bytes.size());
    if (!character.is_valid()) {
      value += "\xEF\xBF\xBD";
    } else if (character.code == '\n') {
      value += "\\n";
    } else {
      if (character.code == '"' || character.code == '\\') value += '\\';
      value += character.bytes;
    }
  }
  return value;
}

}  // namespace

const std::vector<SeriesUnit>& SeriesUnits() {
  static const std::vector<SeriesUnit> units = {
      {"C", "_celsius", 0}, {"V", "_volts", 0},    {"A", "_amperes", 0}, {"W", "_watts", 0},
      {"RPM", "_rpm", 0},   {"%", "_ratio", -2},   {"Hz", "_hertz", 0},  {"J", "_joules", 0},
      {"s", "_seconds", 0}, {"Pa", "_pascals", 0}, {"", "", 0}};
  return units;
}

const SeriesUnit& SeriesUnitOf(std::string_view symbol) {
  for (const SeriesUnit& unit : SeriesUnits()) {
    if (unit.symbol == symbol) return unit;
  }
  return SeriesUnits().back();
}

Amount InSeriesUnit(const Sensor& sensor, Amount amount) {
  const SeriesUnit& unit = SeriesUnitOf(sensor.unit.symbol);
  // A series without a base unit has the unit of the machine, with its prefix.
  amount.exponent += unit.suffix.empty() ? -sensor.unit.exponent : unit.exponent;
  return amount;
}

std::string_view LimitName(const SensorLimit& limit) {
  const std::string_view keyword = limit.row->keyword;
  return keyword.substr(keyword.rfind('_') + 1);
}

std::string SeriesText(std::string_view name, std::string_view suffix, const Labels& labels) {
  std::string text = std::string(name).append(suffix);
  char before = '{';
  for (const auto& [label, value] : labels) {
    text += before;
    text.append(label).append("=\"").append(LabelValue(value)).append("\"");
    before = ',';
  }
  return text + '}';
}

}  // namespace rux::exports
