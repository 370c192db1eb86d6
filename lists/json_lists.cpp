#include "lists/json_lists.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "lists/list.h"
#include "settings/json_file.h"

namespace rux::lists {
namespace {

using settings::JsonMember;
using settings::JsonValue;

// A list whose columns are found on the way.
class Collector {
 public:
  void Begin(std::uint32_t line) {
    End();
    list_.rows.push_back({line, {}});
  }

  void Put(const std::string& column, std::string text) {
    const auto [known, is_new] = places_.try_emplace(column, list_.columns.size());
    if (is_new) list_.columns.push_back(column);
    cells_[known->second] = std::move(text);
  }

  List Take() {
    End();
    return std::move(list_);
  }

 private:
  void End() {
    for (auto& [column, text] : cells_)
      list_.rows.back().cells.push_back({column, std::move(text)});
    cells_.clear();
  }

  List list_;
  std::unordered_map<std::string, std::size_t> places_;
  std::map<std::size_t, std::string> cells_;  // of the last row
};

// A number or a text; a reading may be either.
bool IsPlain(const JsonValue& value) {
  return value.kind == JsonValue::Kind::kString || value.kind == JsonValue::Kind::kNumber;
}

// What a reading is measured in, by the beginning of its name.
std::string UnitOfReading(std::string_view name) {
  struct Row {
    std::string_view beginning;
    const char* unit;
  };
  constexpr Row kRows[] = {{"temp", "C"},  {"in", "V"},     {"fan", "RPM"},   {"curr", "A"},
                           {"power", "W"}, {"energy", "J"}, {"humidity", "%"}};
  const std::string_view letters = name.substr(0, name.find_first_of("0123456789_"));
  for (const Row& row : kRows) {
    if (letters == row.beginning) return row.unit;
  }
  return "";
}

void CollectFeature(const std::string& chip, const JsonMember& feature, Collector& collector) {
  if (feature.value.kind != JsonValue::Kind::kObject || feature.value.members.empty()) return;
  collector.Begin(feature.line);
  collector.Put("chip", chip);
  collector.Put("label", feature.key);
  collector.Put("unit", UnitOfReading(feature.value.members.front().key));
  for (const JsonMember& reading : feature.value.members) {
    const std::size_t end = reading.key.find('_');
    if (end != std::string::npos && IsPlain(reading.value))
      collector.Put(reading.key.substr(end + 1), reading.value.text);
  }
}

const JsonValue* Find(const JsonValue& object, std::string_view key) {
  const auto found = std::find_if(object.members.begin(), object.members.end(),
                                  [&](const JsonMember& member) { return member.key == key; });
  return found == object.members.end() ? nullptr : &found->value;
}

// The older names of thresholds, which are members of the sensor itself, as the newer ones.
struct OlderName {
  std::string_view older;
  const char* newer;
};
constexpr OlderName kOlderNames[] = {
    {"LowerThresholdNonCritical", "LowerCaution"}, {"LowerThresholdCritical", "LowerCritical"},
    {"LowerThresholdFatal", "LowerFatal"},         {"UpperThresholdNonCritical", "UpperCaution"},
    {"UpperThresholdCritical", "UpperCritical"},   {"UpperThresholdFatal", "UpperFatal"}};
// Readings whose names say the unit.
constexpr OlderName kOlderReadings[] = {{"ReadingCelsius", "Cel"}, {"ReadingVolts", "V"}};

void CollectSensor(const JsonValue& sensor, const JsonValue& name, Collector& collector) {
  collector.Begin(name.line);
  for (const JsonMember& member : sensor.members) {
    if (!IsPlain(member.value)) continue;
    std::string column = member.key;
    for (const OlderName& row : kOlderNames) {
      if (row.older == member.key) column = row.newer;
    }
    for (const OlderName& row : kOlderReadings) {
      if (row.older == member.key) collector.Put("ReadingUnits", row.newer);
    }
    collector.Put(column, member.value.text);
  }
  const JsonValue* thresholds = Find(sensor, "Thresholds");
  if (thresholds == nullptr) return;
  for (const JsonMember& threshold : thresholds->members) {
    const JsonValue* reading = Find(threshold.value, "Reading");
    if (reading != nullptr && IsPlain(*reading)) collector.Put(threshold.key, reading->text);
  }
}

bool IsSensor(const JsonValue& object) {
  for (const JsonMember& member : object.members) {
    if (member.key == "Thresholds" || member.key.compare(0, 7, "Reading") == 0) return true;
  }
  return false;
}

// As deep as ParseJson() lets values be.
void CollectSensors(const JsonValue& value, Collector& collector) {
  const JsonValue* name = Find(value, "Name");
  if (name != nullptr && name->kind == JsonValue::Kind::kString && IsSensor(value))
    return CollectSensor(value, *name, collector);
  for (const JsonMember& member : value.members) CollectSensors(member.value, collector);
  for (const JsonValue& item : value.items) CollectSensors(item, collector);
}

}  // namespace

bool IsJson(std::string_view text) {
  const std::string_view trimmed = Trimmed(text);
  return !trimmed.empty() && (trimmed.front() == '{' || trimmed.front() == '[');
}

bool IsRedfish(std::string_view text) {
  return IsJson(text) && (text.find("\"@odata.") != std::string_view::npos ||
                          text.find("\"Thresholds\"") != std::string_view::npos ||
                          text.find("\"ReadingType\"") != std::string_view::npos);
}

List ReadSensorsJson(const std::string& path, std::string_view text) {
  const JsonValue root = settings::ParseJson(path, text);
  Collector collector;
  for (const JsonMember& chip : root.members) {
    for (const JsonMember& feature : chip.value.members)
      CollectFeature(chip.key, feature, collector);
  }
  return collector.Take();
}

List ReadRedfish(const std::string& path, std::string_view text) {
  Collector collector;
  CollectSensors(settings::ParseJson(path, text), collector);
  return collector.Take();
}

}  // namespace rux::lists
