// Units, whatever they are called.
#ifndef LISTS_UNITS_H_
#define LISTS_UNITS_H_

#include <optional>
#include <string>
#include <string_view>

namespace rux::lists {

// A unit by its symbol and a power of ten: mV is V, -3.
struct Unit {
  std::string_view symbol;
  int exponent;
};
// None of a text that is not known.
std::optional<Unit> FindUnit(std::string_view text);

// How many `to` one `from` is: 0.001 of mV to V; 1 of "degrees C" to Cel, and of texts that are the
// same. None when they are of other kinds, or one is not known.
std::optional<double> UnitFactor(std::string_view from, std::string_view to);

// The unit in brackets or parentheses at the end of what heads a column, such as "Max [mV]", which
// is taken off it; empty when it has none.
std::string TakeUnit(std::string& header);

}  // namespace rux::lists

#endif  // LISTS_UNITS_H_
