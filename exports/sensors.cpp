#include "exports/sensors.h"

#include <cstdint>
#include <utility>
#include <vector>

#include "exports/amount.h"
#include "lists/units.h"
#include "machine/machine.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/limits.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/records.h"

namespace rux::exports {

namespace language = ruxcomp::language;

bool SensorLimit::IsUpper() const {
  const language::LimitRow* const limit = language::FindLimit(row->source);
  return limit != nullptr && limit->side == language::LimitSide::kMost;
}

Amount Sensor::AmountOf(std::int64_t number) const {
  return {number, quantity.divisor.value_or(1), unit.exponent};
}

std::vector<Sensor> SensorsOf(const machine::Machine& machine) {
  std::vector<Sensor> sensors;
  for (const ruxcomp::Section section : machine.model().sections(RUX_SECT_SENSOR)) {
    Sensor sensor{section, machine.QuantityOf(section), {{}, 0}, {}};
    if (sensor.quantity.unit)
      sensor.unit = lists::FindUnit(*sensor.quantity.unit).value_or(sensor.unit);
    for (const language::EntryId id : language::kLimitsUpwards) {
      const language::EntryRow* const row = language::FindEntryRow(id);
      const ruxcomp::Value value = section.entry(row->compiled).value();
      if (value.kind() != RUX_DATA_NUMBER) continue;
      sensor.limits.push_back(
          {row, value.number(), sensor.AmountOf(sensor.quantity.SignedNumber(value.number()))});
    }
    sensors.push_back(std::move(sensor));
  }
  return sensors;
}

}  // namespace rux::exports
