#include "imports/formats/entity_reader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "imports/board.h"
#include "imports/formats/entity_words.h"
#include "imports/formats/json_items.h"
#include "imports/names.h"
#include "losses/ledger.h"
#include "ruxcomp/language/entries.h"
#include "settings/json_file.h"

namespace rux::imports {
namespace {

using losses::Reason;
using settings::JsonMember;
using settings::JsonValue;

// The names of channels that measure something else than those that have a number.
struct NameKey {
  std::string_view key;
  Quantity quantity;
};
constexpr NameKey kNameKeys[] = {{"NamePressure", Quantity::kPressure},
                                 {"NameHumidity", Quantity::kHumidity}};

constexpr std::string_view kNameEnd = "_Name";  // of the key that names a channel

// Severities 0 and 1 are warning and critical. Scripts have none of the stronger ones.
struct ThresholdKind {
  std::string_view direction;
  std::string_view severity;
  language::EntryId entry;
  std::string_view name;  // by which people usually call it
};
constexpr ThresholdKind kThresholdKinds[] = {
    {"greater than", "0", language::ENTRY_THRESHOLD_WH, "upper non critical"},
    {"greater than", "1", language::ENTRY_THRESHOLD_FH, "upper critical"},
    {"less than", "0", language::ENTRY_THRESHOLD_WL, "lower non critical"},
    {"less than", "1", language::ENTRY_THRESHOLD_FL, "lower critical"}};

// The text of a member; empty without one.
std::string_view TextIn(const JsonValue& object, std::string_view key) {
  const JsonValue* const member = Member(object, key);
  return member == nullptr ? std::string_view() : std::string_view(member->text);
}

const std::vector<JsonValue>& ThresholdsOf(const JsonValue& entry) {
  static const std::vector<JsonValue> none;
  const JsonValue* const thresholds = Member(entry, "Thresholds");
  return thresholds == nullptr ? none : thresholds->items;
}

class EntityReader {
 public:
  EntityReader(const JsonValue& entry, const EntityPlace& place)
      : entry_(entry),
        place_(place),
        items_(place.items),
        board_(place.board),
        ledger_(place.ledger),
        origin_{place.file, entry.line, place.items.PointerOf(entry)},
        kind_(QuantityOfEntry(TextIn(entry, "Type"), TextIn(entry, "Units"),
                              TextIn(entry, "SensorType"))),
        first_(place.board.sensors.size()) {}

  void Read() {
    if (TextIn(entry_, "Name").empty()) return items_.Drop(entry_, Reason::kNameless);
    FindNames();
    for (const std::string& label : LabelsOf()) AddChannel(label);
    TakeChannelMembers();
    if (channels_.empty()) AddNamed();
    for (const JsonValue& threshold : ThresholdsOf(entry_)) TakeThreshold(threshold);
    const std::size_t sensors = board_.sensors.size() - first_;
    if (sensors == 1 && Member(entry_, "Address") == nullptr)
      items_.TakeRest(entry_, "", board_.sensors[first_].properties);
    else
      AddDevice();
  }

 private:
  // Name is that of the first channel, Name1 that of the second.
  void FindNames() {
    for (const JsonMember& member : entry_.members) {
      const std::size_t number = NumberOfName(member.key);
      if (number > 0 && !member.value.text.empty()) names_.emplace(number, &member.value);
    }
  }

  // Those that are listed; without a list, those that have a limit or a name. Channels that are
  // switched off are noted as such.
  std::vector<std::string> LabelsOf() {
    std::vector<std::string> labels;
    const auto add = [&](std::string_view label) {
      if (label.empty() || channels_.count(std::string(label)) > 0) return;
      const JsonValue* const name = Member(entry_, std::string(label).append(kNameEnd));
      const bool is_off = name != nullptr && IsLeaf(*name) && name->text.empty();
      channels_.emplace(label, is_off ? std::nullopt : std::optional(labels.size()));
      if (is_off)
        ledger_.Used(items_.Take(*name).item);  // the scripts leave the sensor out
      else
        labels.emplace_back(label);
    };
    if (const JsonValue* const listed = Member(entry_, "Labels")) {
      for (const JsonValue& label : listed->items) {
        if (!IsLeaf(label)) continue;
        add(label.text);
        const losses::ItemId item = items_.Take(label).item;
        if (IsOff(label.text))
          ledger_.Dropped(item, Reason::kDisabled);
        else
          ledger_.Used(item);
      }
      return labels;
    }
    for (const JsonValue& threshold : ThresholdsOf(entry_)) add(TextIn(threshold, "Label"));
    for (const JsonMember& member : entry_.members) {
      const std::string_view key = member.key;
      if (key.size() > kNameEnd.size() && key.substr(key.size() - kNameEnd.size()) == kNameEnd)
        add(key.substr(0, key.size() - kNameEnd.size()));
    }
    return labels;
  }

  bool IsOff(const std::string& label) const {
    const auto channel = channels_.find(label);
    return channel != channels_.end() && !channel->second;
  }

  // A label of a chip that is known to measure temperatures.
  bool IsOfTemperatureChip(std::string_view label) const {
    return kind_ == Quantity::kTemperature && QuantityOfLabel(label) == Quantity::kTemperature;
  }

  void AddChannel(const std::string& label) {
    Sensor sensor;
    sensor.name = items_.Take(entry_, label + std::string(kNameEnd));
    if (sensor.name.text.empty()) sensor.name = NameOfChannel(label);
    sensor.quantity = QuantityOfLabel(label).value_or(kind_.value_or(Quantity::kOther));
    sensor.properties.push_back({"CHANNEL", {label, losses::kNoItem}});
    Add(std::move(sensor));
  }

  // temp2 of a temperature chip is called Name1; other channels, by Name1 and their label.
  Text NameOfChannel(const std::string& label) {
    const std::size_t number = std::max<std::size_t>(NumberOfLabel(label), 1);
    const auto numbered = names_.find(number);
    const bool is_named = numbered != names_.end();
    const JsonValue& name = is_named ? *numbered->second : *Member(entry_, "Name");
    if (is_named && IsOfTemperatureChip(label)) return items_.Take(name);
    const std::string text = name.text.substr(0, kMostNameBytes) + ' ' + label;
    if (is_named && number > 1) TakeName(name);
    return {text, losses::kNoItem};
  }

  // It is a part of the names of sensors.
  void TakeName(const JsonValue& name) {
    const Text text = items_.Take(name);
    NoteTemplate(text, ledger_);
    ledger_.Used(text.item);
  }

  // Of "in0_Scale", the Scale is a property of the channel in0.
  void TakeChannelMembers() {
    for (const JsonMember& member : entry_.members) {
      const std::size_t end = member.key.rfind('_');
      if (end == std::string::npos) continue;
      const auto channel = channels_.find(member.key.substr(0, end));
      if (channel == channels_.end()) continue;
      if (!channel->second) {
        items_.Drop(member.value, Reason::kDisabled);
        continue;
      }
      items_.TakeRest(member.value, member.key.substr(end + 1, kMostNameBytes),
                      board_.sensors[first_ + *channel->second].properties);
    }
  }

  // What is known as a sensor or has limits is one.
  void AddNamed() {
    if (!kind_ && ThresholdsOf(entry_).empty()) return;
    const Quantity quantity = kind_.value_or(Quantity::kOther);
    std::size_t next = 1;
    for (const auto& [number, name] : names_) {
      AddNamed(*name, number, quantity);
      next = number + 1;
    }
    for (const NameKey& row : kNameKeys) {
      const JsonValue* const name = Member(entry_, row.key);
      if (name != nullptr && !name->text.empty()) AddNamed(*name, next++, row.quantity);
    }
  }

  void AddNamed(const JsonValue& name, std::size_t number, Quantity quantity) {
    numbered_.emplace(number, board_.sensors.size());
    Sensor sensor;
    sensor.name = items_.Take(name);
    sensor.quantity = quantity;
    Add(std::move(sensor));
  }

  void Add(Sensor sensor) {
    sensor.area = place_.area;
    sensor.origin = origin_;
    board_.sensors.push_back(std::move(sensor));
  }

  void AddDevice() {
    for (std::size_t i = first_; i < board_.sensors.size(); ++i)
      board_.sensors[i].device = board_.devices.size();
    Device device;
    device.origin = origin_;
    device.name = items_.Take(*Member(entry_, "Name"));
    items_.TakeRest(entry_, "", device.properties);
    board_.devices.push_back(std::move(device));
  }

  // The sensor that a limit is for: by its label or, without labels, by its number from 1 on; of a
  // chip that measures temperatures, number 2 is temp2. Without one, the reason.
  std::pair<Sensor*, Reason> SensorFor(const JsonValue& threshold) {
    constexpr Reason kNone = Reason::kNoOwner;
    const JsonValue* const index = Member(threshold, "Index");
    const std::uint64_t number = index == nullptr ? 1 : index->number.value_or(0);
    if (channels_.empty()) {
      const auto numbered = numbered_.find(number);
      return {numbered == numbered_.end() ? nullptr : &board_.sensors[numbered->second], kNone};
    }
    std::string label(TextIn(threshold, "Label"));
    if (label.empty() && kind_ == Quantity::kTemperature) label = "temp" + std::to_string(number);
    if (IsOff(label)) return {nullptr, Reason::kDisabled};
    const auto channel = channels_.find(label);
    if (channel == channels_.end()) return {nullptr, kNone};
    return {&board_.sensors[first_ + *channel->second], kNone};
  }

  void TakeThreshold(const JsonValue& threshold) {
    const auto [sensor, reason] = SensorFor(threshold);
    if (sensor == nullptr) return items_.Drop(threshold, reason);
    const auto kind = std::find_if(std::begin(kThresholdKinds), std::end(kThresholdKinds),
                                   [&](const ThresholdKind& row) {
                                     return row.direction == TextIn(threshold, "Direction") &&
                                            row.severity == TextIn(threshold, "Severity");
                                   });
    if (kind == std::end(kThresholdKinds)) return items_.Drop(threshold, Reason::kNoSuchLimit);
    const Text value = items_.Take(threshold, "Value");
    Limit limit{kind->entry, {}, value.item};
    for (const char* key : {"Direction", "Severity", "Label", "Index"})
      limit.parts.push_back(items_.Take(threshold, key).item);
    if (TextIn(threshold, "Name") == kind->name)
      limit.parts.push_back(items_.Take(threshold, "Name").item);
    // THRESHOLD_FH: FH
    const std::string_view key = language::KeywordOf(kind->entry);
    items_.TakeRest(threshold, std::string(key.substr(key.rfind('_') + 1)), limit.properties);
    AddLimit(*sensor, std::move(limit), value.text, ledger_);
  }

  const JsonValue& entry_;
  const EntityPlace& place_;
  JsonItems& items_;
  Board& board_;
  losses::Ledger& ledger_;
  const Origin origin_;
  const std::optional<Quantity> kind_;
  const std::size_t first_;                                     // of its sensors
  std::map<std::size_t, const JsonValue*> names_;               // by number, from 1
  std::map<std::size_t, std::size_t> numbered_;                 // sensors by number
  std::map<std::string, std::optional<std::size_t>> channels_;  // by label; none: switched off
};

}  // namespace

void ReadEntity(const JsonValue& entry, const EntityPlace& place) {
  EntityReader(entry, place).Read();
}

}  // namespace rux::imports
