#include "imports/scale.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "imports/board.h"
#include "imports/decimal.h"

namespace rux::imports {
namespace {

// In the order in which people expect them.
constexpr int kPowers[] = {0, 3, 6, 9, 1, 2, 4, 5, 7, 8};
constexpr std::size_t kLongestNumber = 10;

bool DoFit(const std::vector<Limit>& limits, const std::vector<std::size_t>& places,
           const Scale& scale) {
  return std::all_of(places.begin(), places.end(), [&](std::size_t place) {
    return NumberFor(limits[place].amount, scale).has_value();
  });
}

std::optional<Scale> CommonScale(const std::vector<Limit>& limits,
                                 const std::vector<std::size_t>& places) {
  for (const bool is_signed : {true, false}) {
    for (const int power : kPowers) {
      const Scale scale{power, is_signed};
      if (DoFit(limits, places, scale)) return scale;
    }
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> NumberFor(const Decimal& amount, const Scale& scale) {
  const std::optional<std::int64_t> number = amount.WholeAt(scale.power);
  if (!number) return std::nullopt;
  const std::int64_t least = scale.is_signed ? std::numeric_limits<std::int32_t>::min() : 0;
  const std::int64_t most = scale.is_signed ? std::int64_t{std::numeric_limits<std::int32_t>::max()}
                                            : std::numeric_limits<std::uint32_t>::max() - 1;
  if (*number < least || *number > most || *number == -1) return std::nullopt;
  std::string text = std::to_string(*number);
  if (text.size() > kLongestNumber) return std::nullopt;
  return text;
}

ScaledLimits ScaleFor(const std::vector<Limit>& limits) {
  ScaledLimits scaled;
  for (std::size_t i = 0; i < limits.size(); ++i) {
    scaled.fitting.push_back(i);
    const std::optional<Scale> scale = CommonScale(limits, scaled.fitting);
    if (scale)
      scaled.scale = *scale;
    else
      scaled.fitting.pop_back();
  }
  return scaled;
}

}  // namespace rux::imports
