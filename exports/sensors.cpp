#include "exports/sensors.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "exports/account.h"
#include "exports/amount.h"
#include "lists/units.h"
#include "losses/ledger.h"
#include "machine/machine.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/limits.h"
#include "ruxcomp/language/symbols.h"
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

void AccountForLimit(const Sensor& sensor, const SensorLimit& limit, const Amount& amount,
                     const std::string& written, Account& account) {
  const std::uint32_t identifier = limit.row->compiled;
  if (!amount.IsDecimal() || written != amount.Text()) {
    account.Changed(sensor.section, identifier, written, losses::Reason::kRounded);
  } else if (written != std::to_string(limit.number)) {
    account.Changed(sensor.section, identifier, written, losses::Reason::kRewritten);
  } else {
    account.Used(sensor.section, identifier);
  }
}

ruxcomp::Entry PropertyOf(const ruxcomp::Section& section, std::string_view name) {
  for (const ruxcomp::Entry entry : section.entries()) {
    if (language::ClassOf(entry.identifier()) != language::CLASS_Property) continue;
    if (entry.name() == name && entry.value().kind() == RUX_DATA_STRING) return entry;
  }
  return {};
}

std::string_view LabelOf(const ruxcomp::Section& section) {
  const ruxcomp::Entry label = PropertyOf(section, kLabelProperty);
  return label ? label.value().text() : section.name();
}

void AccountForLabel(const ruxcomp::Section& section, Account& account) {
  const ruxcomp::Entry label = PropertyOf(section, kLabelProperty);
  account.UsedAsUtf8(section, label ? label.identifier() : RUX_ENTRY_NAME);
}

std::vector<DeviceSensors> ByDevice(const machine::Machine& machine,
                                    const std::vector<Sensor>& sensors) {
  std::vector<DeviceSensors> devices;
  for (const ruxcomp::Section device : machine.model().sections(RUX_SECT_DEVICE))
    devices.push_back({device, {}});
  devices.push_back({});
  for (const Sensor& sensor : sensors) {
    const std::string_view name = PropertyOf(sensor.section, kDeviceProperty).value().text();
    const ruxcomp::Section device = machine.model().section_named(RUX_SECT_DEVICE, name);
    (device ? devices[device.ordinal()] : devices.back()).sensors.push_back(&sensor);
  }
  return devices;
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
