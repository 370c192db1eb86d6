// The sensors of a machine as those formats see them that know quantities and limits.
#ifndef EXPORTS_SENSORS_H_
#define EXPORTS_SENSORS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "exports/amount.h"
#include "lists/units.h"
#include "machine/machine.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/model/handles.h"

namespace rux::exports {

struct SensorLimit {
  const ruxcomp::language::EntryRow* row;  // THEORY, or a limit
  std::uint32_t number;                    // as it is stored
  Amount amount;                           // in the unit without a prefix

  bool IsUpper() const;
};

struct Sensor {
  ruxcomp::Section section;
  machine::Quantity quantity;
  lists::Unit unit;                 // without a symbol, when it is not known
  std::vector<SensorLimit> limits;  // from the lowest up; those that the sensor has

  Amount AmountOf(std::int64_t number) const;  // with its sign
};

// In the order of the machine.
std::vector<Sensor> SensorsOf(const machine::Machine& machine);

}  // namespace rux::exports

#endif  // EXPORTS_SENSORS_H_
