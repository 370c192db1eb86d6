// A text file of Prometheus: what each sensor is, and its limits.
#include <fmt/format.h>

#include <string>
#include <string_view>
#include <vector>

#include "exports/account.h"
#include "exports/amount.h"
#include "exports/formats.h"
#include "exports/prometheus_series.h"
#include "exports/sensors.h"
#include "machine/groups.h"
#include "machine/machine.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/model/handles.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace rux::exports {
namespace {

void WriteHead(std::string_view name, std::string_view suffix, std::string_view help,
               support::TextStream& out) {
  out += fmt::format("# HELP {0}{1} {2}\n# TYPE {0}{1} gauge\n", name, suffix, help);
}

std::string GroupPathOf(const ruxcomp::Section& sensor) {
  std::vector<std::string> names = machine::GroupsOf(sensor);
  for (std::string& name : names) name = support::NameInPath(name);
  return fmt::to_string(fmt::join(names, "/"));
}

void WriteMachineInfo(const machine::Machine& machine, Account& account, support::TextStream& out) {
  constexpr std::string_view kSeries = "rux_machine_info";
  WriteHead(kSeries, "", "The machine that the sensors are of.", out);
  for (const ruxcomp::Section system : machine.model().sections(RUX_SECT_SYSTEM)) {
    account.UsedAsUtf8(system, RUX_ENTRY_MODEL);
    const std::string model(system.entry(RUX_ENTRY_MODEL).value().text());
    out += SeriesText(kSeries, "", {{"model", model}}) + " 1\n";
  }
}

void WriteSensorInfo(const std::vector<Sensor>& sensors, Account& account,
                     support::TextStream& out) {
  constexpr std::string_view kSeries = "rux_sensor_info";
  if (sensors.empty()) return;
  WriteHead(kSeries, "", "What each sensor is: its ID, its groups, the unit of its limits.", out);
  for (const Sensor& sensor : sensors) {
    account.UsedAsUtf8(sensor.section, RUX_ENTRY_NAME);
    account.Used(sensor.section, RUX_ENTRY_ID);
    account.Used(sensor.section, RUX_ENTRY_PARENT);
    out += SeriesText(kSeries, "",
                      {{kSensorLabel, std::string(sensor.section.name())},
                       {"id", support::IdText(sensor.section.id().value_or(0)).substr(1)},
                       {"group", GroupPathOf(sensor.section)},
                       {"unit", sensor.quantity.unit.value_or("")}}) +
           " 1\n";
  }
}

void WriteLimit(const Sensor& sensor, const SensorLimit& limit, const SeriesUnit& unit,
                Account& account, support::TextStream& out) {
  const Amount amount = InSeriesUnit(sensor, limit.amount);
  const std::string text = amount.Text();
  AccountForLimit(sensor, limit, amount, text, account);
  out += SeriesText(kLimitSeries, unit.suffix,
                    {{kSensorLabel, std::string(sensor.section.name())},
                     {kLimitLabel, std::string(LimitName(limit))}}) +
         ' ' + text + '\n';
}

// Series of a name follow each other.
void WriteLimitsIn(const SeriesUnit& unit, const std::vector<Sensor>& sensors, Account& account,
                   support::TextStream& out) {
  bool has_head = false;
  for (const Sensor& sensor : sensors) {
    if (&SeriesUnitOf(sensor.unit.symbol) != &unit) continue;
    for (const SensorLimit& limit : sensor.limits) {
      if (!has_head) WriteHead(kLimitSeries, unit.suffix, "Limits of sensors.", out);
      has_head = true;
      WriteLimit(sensor, limit, unit, account, out);
    }
  }
}

}  // namespace

void WritePrometheus(const machine::Machine& machine, Account& account, support::TextStream& out) {
  const std::vector<Sensor> sensors = SensorsOf(machine);
  WriteMachineInfo(machine, account, out);
  WriteSensorInfo(sensors, account, out);
  for (const SeriesUnit& unit : SeriesUnits()) WriteLimitsIn(unit, sensors, account, out);
}

}  // namespace rux::exports
