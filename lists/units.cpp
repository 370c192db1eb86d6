#include "lists/units.h"

#include <strings.h>

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "lists/list.h"

namespace rux::lists {
namespace {

// What a name is a name of. The first of the names of a unit is its symbol.
struct UnitName {
  const char* symbol;
  const char* name;
};
constexpr UnitName kUnitNames[] = {
    {"C", "C"},       {"C", "degrees C"},   {"C", "degree C"}, {"C", "deg C"},   {"C", "degC"},
    {"C", "°C"},      {"C", "Cel"},         {"C", "Celsius"},  {"V", "V"},       {"V", "Volt"},
    {"V", "Volts"},   {"A", "A"},           {"A", "Amp"},      {"A", "Amps"},    {"A", "Ampere"},
    {"A", "Amperes"}, {"W", "W"},           {"W", "Watt"},     {"W", "Watts"},   {"RPM", "RPM"},
    {"RPM", "r/min"}, {"RPM", "{rev}/min"}, {"%", "%"},        {"%", "percent"}, {"Hz", "Hz"},
    {"Hz", "Hertz"},  {"J", "J"},           {"J", "Joules"},   {"J", "Joule"},   {"s", "s"},
    {"s", "seconds"}, {"F", "degrees F"},   {"F", "°F"},       {"Pa", "Pa"},     {"CFM", "CFM"}};

struct Prefix {
  std::string_view letter;
  int exponent;
};
constexpr Prefix kPrefixes[] = {{"m", -3}, {"u", -6}, {"µ", -6}, {"n", -9},
                                {"k", 3},  {"M", 6},  {"G", 9}};
// The symbols that go with them.
constexpr std::string_view kWithPrefixes[] = {"V", "A", "W", "Hz", "J", "s", "Pa"};

}  // namespace

std::optional<Unit> FindUnit(std::string_view text) {
  const std::string name(Trimmed(text));
  text = name;
  for (const UnitName& row : kUnitNames) {
    if (strcasecmp(row.name, name.c_str()) == 0) return Unit{row.symbol, 0};
  }
  for (const Prefix& prefix : kPrefixes) {
    if (text.substr(0, prefix.letter.size()) != prefix.letter) continue;
    for (const std::string_view symbol : kWithPrefixes) {
      if (text.substr(prefix.letter.size()) == symbol) return Unit{symbol, prefix.exponent};
    }
  }
  return std::nullopt;
}

std::optional<double> UnitFactor(std::string_view from, std::string_view to) {
  from = Trimmed(from);
  to = Trimmed(to);
  if (from == to) return 1;
  const std::optional<Unit> a = FindUnit(from);
  const std::optional<Unit> b = FindUnit(to);
  if (!a || !b || a->symbol != b->symbol) return std::nullopt;
  return std::pow(10, a->exponent - b->exponent);
}

std::string TakeUnit(std::string& header) {
  const std::string_view text = Trimmed(header);
  if (text.empty() || (text.back() != ']' && text.back() != ')')) return "";
  const std::size_t open = text.rfind(text.back() == ']' ? '[' : '(');
  if (open == std::string_view::npos) return "";
  std::string unit(Trimmed(text.substr(open + 1, text.size() - open - 2)));
  header = std::string(Trimmed(text.substr(0, open)));
  return unit;
}

}  // namespace rux::lists
