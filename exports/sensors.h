// The sensors of a machine as those formats see them that know quantities and limits.
#ifndef EXPORTS_SENSORS_H_
#define EXPORTS_SENSORS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "exports/account.h"
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

// Accounts for a limit that is in the result as that amount: exactly, or nearly.
void AccountForLimit(const Sensor& sensor, const SensorLimit& limit, const Amount& amount,
                     const std::string& written, Account& account);

// The property of that name, without P_; no entry when the sensor has none, or its value is not a
// text.
ruxcomp::Entry PropertyOf(const ruxcomp::Section& section, std::string_view name);

// What sensors are read from, as their property DEVICE names it, and what people call both.
inline constexpr char kDeviceProperty[] = "DEVICE";
inline constexpr char kLabelProperty[] = "LABEL";

// Their property LABEL or, without it, their NAME.
std::string_view LabelOf(const ruxcomp::Section& section);
void AccountForLabel(const ruxcomp::Section& section, Account& account);

struct DeviceSensors {
  ruxcomp::Section device;  // no section: sensors without one
  std::vector<const Sensor*> sensors;
};
// In the order of the devices; last those without one. The sensors must outlive them.
std::vector<DeviceSensors> ByDevice(const machine::Machine& machine,
                                    const std::vector<Sensor>& sensors);

// In the order of the machine.
std::vector<Sensor> SensorsOf(const machine::Machine& machine);

}  // namespace rux::exports

#endif  // EXPORTS_SENSORS_H_
