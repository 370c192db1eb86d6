// What the series of Prometheus are called.
#ifndef EXPORTS_PROMETHEUS_SERIES_H_
#define EXPORTS_PROMETHEUS_SERIES_H_

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "exports/amount.h"
#include "exports/sensors.h"

namespace rux::exports {

inline constexpr std::string_view kReadingSeries = "rux_sensor_reading";
inline constexpr std::string_view kLimitSeries = "rux_sensor_limit";
inline constexpr std::string_view kLimitLabel = "limit";
inline constexpr std::string_view kSensorLabel = "sensor";

// A base unit of Prometheus: what a name ends with, and the power of ten that makes it of ours.
struct SeriesUnit {
  std::string_view symbol;
  std::string_view suffix;
  int exponent;
};
// Of a symbol that lists/ knows; without a suffix when series have no such unit.
const SeriesUnit& SeriesUnitOf(std::string_view symbol);
// All of them; the last one has no suffix.
const std::vector<SeriesUnit>& SeriesUnits();

// The same amount in the unit of the series.
Amount InSeriesUnit(const Sensor& sensor, Amount amount);

// "FH" of THRESHOLD_FH, "THEORY".
std::string_view LimitName(const SensorLimit& limit);

// name_suffix{label="text",...}: texts are UTF-8, with U+FFFD for what is not.
using Labels = std::vector<std::pair<std::string_view, std::string>>;
std::string SeriesText(std::string_view name, std::string_view suffix, const Labels& labels);

}  // namespace rux::exports

#endif  // EXPORTS_PROMETHEUS_SERIES_H_
