#include "machine.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hwmon.h"
#include "journal.h"
#include "limits.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/model.h"

namespace monitor {
namespace {

// The text of a property without P_; empty if the section does not have it.
std::string PropertyOf(const ruxcomp::Section& section, std::string_view name) {
  for (const ruxcomp::Entry entry : section.entries()) {
    if (ruxcomp::ClassOf(entry.identifier()) == RUX_CLASS_Property && entry.name() == name)
      return std::string(entry.value().text());
  }
  return "";
}

// "42/25", "-11/2", "4"; of an empty text the number that it is without one.
std::optional<double> QuotientOf(const std::string& text, double otherwise) {
  if (text.empty()) return otherwise;
  char* rest = nullptr;
  const auto top = static_cast<double>(std::strtoll(text.c_str(), &rest, 10));
  double bottom = 1;
  if (*rest == '/') bottom = static_cast<double>(std::strtoll(rest + 1, &rest, 10));
  if (*rest != '\0' || bottom == 0) return std::nullopt;
  return top / bottom;
}

// How many of the unit of a sensor are one of the kernel's; none if they do not measure the same.
std::optional<double> PerUnit(const std::string& unit, std::string_view kernel_unit) {
  const std::string kernel(kernel_unit);
  if (unit.empty() || strcasecmp(unit.c_str(), kernel.c_str()) == 0) return 1;
  if (unit == 'm' + kernel) return 1e3;
  return std::nullopt;
}

// Returns why the sensor cannot be read, or an empty text.
std::string SetUp(Sensor& sensor, const ruxcomp::Section& section) {
  const InputKind* const kind = KindOf(sensor.feature);
  if (kind == nullptr)
    return "P_FEATURE " + sensor.feature + " has no input that this program knows";
  const std::string divisor = PropertyOf(section, "DIVISOR");
  const std::optional<double> per_unit = PerUnit(sensor.unit, kind->unit);
  if (!per_unit) return "P_UNIT " + sensor.unit + " of " + sensor.feature;
  if (!divisor.empty())
    sensor.divisor = static_cast<double>(ruxcomp::language::ReadNumber(divisor).value);
  const std::optional<double> factor = QuotientOf(PropertyOf(section, "FACTOR"), 1);
  const std::optional<double> offset = QuotientOf(PropertyOf(section, "OFFSET"), 0);
  if (!factor || !offset || sensor.divisor == 0)
    return "P_FACTOR, P_OFFSET or P_DIVISOR is not a number";
  const double stored = *per_unit * sensor.divisor;
  sensor.scale = {*factor * stored, kind->per_unit, *offset * stored};
  return sensor.patterns.empty() ? "its P_DEVICE has no P_CHIP" : "";
}

Sensor SensorOf(const ruxcomp::Model& model, const ruxcomp::Section& section, bool watch_all) {
  const ruxcomp::Section device =
      model.section_named(RUX_SECT_DEVICE, PropertyOf(section, "DEVICE"));
  Sensor sensor;
  sensor.name = section.name();
  sensor.unit = PropertyOf(section, "UNIT");
  sensor.patterns = PropertyOf(device, "CHIP");
  sensor.feature = PropertyOf(section, "FEATURE");
  sensor.limits = LimitsOf(section);
  const std::uint32_t flag = section.entry(RUX_ENTRY_INITFLAG).value().number();
  const bool has_limits = std::any_of(sensor.limits.begin(), sensor.limits.end(),
                                      [](const auto& limit) { return limit.has_value(); });
  sensor.is_watched = has_limits && (watch_all || flag == kExampleFirmware.watched_initflag);
  return sensor;
}

// "11.4 V"
std::string AmountText(const Sensor& sensor, std::int64_t number) {
  std::array<char, 32> text;
  std::snprintf(text.data(), text.size(), "%.10g", static_cast<double>(number) / sensor.divisor);
  return text.data() + (sensor.unit.empty() ? "" : ' ' + sensor.unit);
}

void ReportBand(const Sensor& sensor) {
  const std::string text = sensor.name + ": " + AmountText(sensor, *sensor.reading);
  const std::optional<std::size_t> beyond = sensor.band.beyond();
  if (!beyond) return Log(Priority::kNotice, text + ", normal");
  const LimitKind& kind = kLimitKinds[*beyond];
  const std::string band(kind.band);
  // A limit may be gone since a new meta file was loaded.
  const std::string limit =
      sensor.limits[*beyond] ? AmountText(sensor, *sensor.limits[*beyond]) : "none";
  Log(band.front() == 'F' ? Priority::kCritical : Priority::kWarning,
      text + ", " + band + (kind.is_high ? " (above " : " (below ") + limit + ')');
}

// What the limits of the sensor are compared with, to the nearest whole number.
std::optional<std::int64_t> ReadSensor(const Sensor& sensor, std::string& reason) {
  reason = "no chip fits " + sensor.patterns;
  if (sensor.path.empty()) return std::nullopt;
  const std::optional<std::int64_t> number = ReadInput(sensor.path, reason);
  if (!number) return std::nullopt;
  const Scale& scale = sensor.scale;
  const double scaled = static_cast<double>(*number) * scale.times / scale.over + scale.plus;
  constexpr double kMost = 1e15;  // whole numbers are exact
  reason = sensor.path + ": too large";
  if (!(std::abs(scaled) < kMost)) return std::nullopt;
  return std::llround(scaled);
}

void ReadOne(Sensor& sensor) {
  std::string reason;
  sensor.reading = ReadSensor(sensor, reason);
  const bool was_missing = std::exchange(sensor.is_missing, !sensor.reading);
  if (!sensor.reading) {
    sensor.band.Skip();
    if (!was_missing) Log(Priority::kWarning, sensor.name + ": no reading: " + reason);
    return;
  }
  if (was_missing) Log(Priority::kNotice, sensor.name + ": has a reading again");
  if (!sensor.is_watched) return;
  const std::optional<std::size_t> before = sensor.band.beyond();
  sensor.band.Next(sensor.limits, *sensor.reading, kExampleFirmware);
  if (sensor.band.beyond() != before) ReportBand(sensor);
}

}  // namespace

std::string_view Sensor::BandName() const {
  if (!is_watched) return "none";
  if (!reading) return "unknown";
  const std::optional<std::size_t> limit = band.beyond();
  return limit ? kLimitKinds[*limit].band : "normal";
}

bool Machine::Load(const std::string& meta) {
  ruxcomp::Fault fault;
  // Read into memory: whoever writes into the file does not change what is being read.
  const std::optional<ruxcomp::Model> model = ruxcomp::Model::LoadVerified(meta, &fault);
  if (!model) {
    Log(Priority::kError, meta + ": " + ruxcomp::FaultText(fault));
    return false;
  }
  std::map<std::string, const Sensor*> before;
  for (const Sensor& sensor : sensors_) before.emplace(sensor.name, &sensor);
  std::vector<Sensor> found;
  const ruxcomp::Sections sections = model->sections(RUX_SECT_SENSOR);
  for (const ruxcomp::Section section : sections) {
    Sensor sensor = SensorOf(*model, section, options_.watch_all);
    if (sensor.feature.empty()) continue;
    const std::string hindrance = SetUp(sensor, section);
    if (!hindrance.empty()) {
      Log(Priority::kWarning, sensor.name + ": not read: " + hindrance);
      continue;
    }
    const auto known = before.find(sensor.name);
    if (known != before.end()) {
      sensor.band = known->second->band;
      sensor.is_missing = known->second->is_missing;
    }
    found.push_back(std::move(sensor));
  }
  sensors_ = std::move(found);
  FindInputs();
  const std::uint32_t loop =
      model->sections(RUX_SECT_SYSTEM)[0].entry(RUX_ENTRY_RUXLOOP).value().number();
  constexpr std::uint32_t kUsualInterval = 1000;
  constexpr std::uint32_t kLeastInterval = 10;
  interval_ =
      std::chrono::milliseconds(loop == 0 ? kUsualInterval : std::max(loop, kLeastInterval));
  Log(Priority::kInfo, meta + ": sensors read: " + std::to_string(sensors_.size()) + " of " +
                           std::to_string(sections.size()));
  return true;
}

void Machine::FindInputs() {
  const std::vector<Chip> chips = FindChips(options_.root);
  for (Sensor& sensor : sensors_) {
    const Chip* const chip = ChipFor(chips, sensor.patterns);
    sensor.path = chip == nullptr ? "" : chip->folder + '/' + sensor.feature + "_input";
  }
}

void Machine::ReadAll() {
  for (Sensor& sensor : sensors_) ReadOne(sensor);
  // A chip that is gone may come back in another folder.
  const bool is_complete = std::none_of(sensors_.begin(), sensors_.end(),
                                        [](const Sensor& sensor) { return sensor.is_missing; });
  if (!is_complete) FindInputs();
}

}  // namespace monitor
