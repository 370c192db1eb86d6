// Configurations of OpenBMC's entity-manager.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "imports/board.h"
#include "imports/formats.h"
#include "imports/formats/entity_words.h"
#include "imports/formats/json_items.h"
#include "imports/formats/readers.h"
#include "imports/names.h"
#include "losses/ledger.h"
#include "ruxcomp/language/entries.h"
#include "settings/json_file.h"
#include "support/ascii.h"
#include "support/failure.h"

namespace rux::imports {
namespace {

using losses::Reason;
using settings::JsonMember;
using settings::JsonValue;

// The names of further channels of a chip without labels, and what they measure if it is not what
// the first one does.
struct NameKey {
  std::string_view key;
  std::optional<Quantity> quantity;
};
constexpr NameKey kNameKeys[] = {{"Name", {}},
                                 {"Name1", {}},
                                 {"Name2", {}},
                                 {"Name3", {}},
                                 {"NamePressure", Quantity::kPressure},
                                 {"NameHumidity", Quantity::kHumidity}};

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

bool HasTemplate(std::string_view text) {
  const std::size_t at = text.find('$');
  return at != std::string_view::npos && at + 1 < text.size() && support::IsLetter(text[at + 1]);
}

// One entry of Exposes.
class EntityReader {
 public:
  EntityReader(const JsonValue& entry, std::size_t area, std::uint32_t file, JsonItems& items,
               Board& board, losses::Ledger& ledger)
      : entry_(entry),
        area_(area),
        items_(items),
        board_(board),
        ledger_(ledger),
        origin_{file, entry.line, items.PointerOf(entry)} {}

  void Read() {
    if (TextIn(entry_, "Name").empty()) return items_.Drop(entry_, Reason::kNameless);
    const std::size_t first = board_.sensors.size();
    const std::vector<std::string> labels = LabelsOf();
    for (const std::string& label : labels) AddChannel(label);
    TakeChannelMembers(first);
    if (labels.empty()) AddNamed();
    for (const JsonValue& threshold : ThresholdsOf(entry_)) TakeThreshold(threshold, first);
    const std::size_t sensors = board_.sensors.size() - first;
    if (sensors == 1 && Member(entry_, "Address") == nullptr)
      items_.TakeRest(entry_, "", board_.sensors[first].properties);
    else
      AddDevice(first);
  }

 private:
  // Those that are listed; without a list, those that have a limit or a name.
  std::vector<std::string> LabelsOf() {
    std::vector<std::string> labels;
    const auto add = [&](std::string_view label) {
      if (!label.empty() && channels_.try_emplace(std::string(label), labels.size()).second)
        labels.emplace_back(label);
    };
    if (const JsonValue* const listed = Member(entry_, "Labels")) {
      for (const JsonValue& label : listed->items) {
        if (!IsLeaf(label)) continue;
        ledger_.Used(items_.Take(label).item);
        add(label.text);
      }
      return labels;
    }
    for (const JsonValue& threshold : ThresholdsOf(entry_)) add(TextIn(threshold, "Label"));
    constexpr std::string_view kEnd = "_Name";
    for (const JsonMember& member : entry_.members) {
      const std::string_view key = member.key;
      if (key.size() > kEnd.size() && key.substr(key.size() - kEnd.size()) == kEnd)
        add(key.substr(0, key.size() - kEnd.size()));
    }
    return labels;
  }

  void AddChannel(const std::string& label) {
    Sensor sensor;
    sensor.name = items_.Take(entry_, label + "_Name");
    if (sensor.name.text.empty())
      sensor.name.text =
          std::string(TextIn(entry_, "Name").substr(0, kMostNameBytes)) + ' ' + label;
    sensor.quantity = QuantityOfLabel(label);
    sensor.properties.push_back({"CHANNEL", {label, losses::kNoItem}});
    Add(std::move(sensor));
  }

  // Of "in0_Scale", the Scale is a property of the channel in0.
  void TakeChannelMembers(std::size_t first) {
    for (const JsonMember& member : entry_.members) {
      const std::size_t end = member.key.rfind('_');
      if (end == std::string::npos) continue;
      const auto channel = channels_.find(member.key.substr(0, end));
      if (channel == channels_.end()) continue;
      items_.TakeRest(member.value, member.key.substr(end + 1, kMostNameBytes),
                      board_.sensors[first + channel->second].properties);
    }
  }

  // What is known as a sensor or has limits is one.
  void AddNamed() {
    const std::optional<Quantity> kind =
        QuantityOfEntry(TextIn(entry_, "Type"), TextIn(entry_, "Units"));
    if (!kind && ThresholdsOf(entry_).empty()) return;
    for (const NameKey& row : kNameKeys) {
      if (TextIn(entry_, row.key).empty()) continue;
      Sensor sensor;
      sensor.name = items_.Take(entry_, row.key);
      sensor.quantity = row.quantity.value_or(kind.value_or(Quantity::kOther));
      Add(std::move(sensor));
    }
  }

  void Add(Sensor sensor) {
    sensor.area = area_;
    sensor.origin = origin_;
    NoteTemplate(sensor.name);
    board_.sensors.push_back(std::move(sensor));
  }

  void AddDevice(std::size_t first_sensor) {
    for (std::size_t i = first_sensor; i < board_.sensors.size(); ++i)
      board_.sensors[i].device = board_.devices.size();
    Device device;
    device.origin = origin_;
    const JsonValue& name = *Member(entry_, "Name");
    device.name = items_.Take(name);
    NoteTemplate(device.name);
    items_.TakeRest(entry_, "", device.properties);
    for (const Property& property : device.properties) {
      if (HasTemplate(property.value.text))
        ledger_.Changed(property.value.item, property.value.text, Reason::kKnownAtRunTime);
    }
    board_.devices.push_back(std::move(device));
  }

  void NoteTemplate(const Text& name) {
    if (HasTemplate(name.text))
      ledger_.Changed(name.item, LegalName(name.text), Reason::kKnownAtRunTime);
  }

  // The sensor that a limit is for: by its label or, without labels, by its number from 1 on.
  Sensor* SensorFor(const JsonValue& threshold, std::size_t first) {
    std::size_t place = first;
    if (!channels_.empty()) {
      const auto channel = channels_.find(std::string(TextIn(threshold, "Label")));
      if (channel == channels_.end()) return nullptr;
      place += channel->second;
    } else if (const JsonValue* const index = Member(threshold, "Index")) {
      constexpr std::uint64_t kMost = sizeof kNameKeys / sizeof *kNameKeys;
      const std::uint64_t number = index->number.value_or(0);
      if (number == 0 || number > kMost) return nullptr;
      place += number - 1;
    }
    return place < board_.sensors.size() ? &board_.sensors[place] : nullptr;
  }

  void TakeThreshold(const JsonValue& threshold, std::size_t first) {
    Sensor* const sensor = SensorFor(threshold, first);
    if (sensor == nullptr) return items_.Drop(threshold, Reason::kNoOwner);
    const auto kind = std::find_if(std::begin(kThresholdKinds), std::end(kThresholdKinds),
                                   [&](const ThresholdKind& row) {
                                     return row.direction == TextIn(threshold, "Direction") &&
                                            row.severity == TextIn(threshold, "Severity");
                                   });
    if (kind == std::end(kThresholdKinds)) return items_.Drop(threshold, Reason::kNoSuchLimit);
    const std::size_t limits = sensor->limits.size();
    const Text value = items_.Take(threshold, "Value");
    AddLimit(*sensor, kind->entry, value.text, value.item, ledger_);
    if (sensor->limits.size() == limits) return items_.Drop(threshold, Reason::kDuplicate);
    for (const char* key : {"Direction", "Severity", "Label", "Index"})
      ledger_.Used(items_.Take(threshold, key).item);
    if (TextIn(threshold, "Name") == kind->name) ledger_.Used(items_.Take(threshold, "Name").item);
    // THRESHOLD_FH: FH
    const std::string_view key = language::KeywordOf(kind->entry);
    items_.TakeRest(threshold, std::string(key.substr(key.rfind('_') + 1)), sensor->properties);
  }

  const JsonValue& entry_;
  const std::size_t area_;
  JsonItems& items_;
  Board& board_;
  losses::Ledger& ledger_;
  const Origin origin_;
  std::map<std::string, std::size_t> channels_;  // places of labels
};

// A file is one configuration or a list of them.
std::vector<const JsonValue*> ConfigurationsIn(const JsonValue& root, const std::string& path) {
  std::vector<const JsonValue*> configurations;
  if (root.kind == JsonValue::Kind::kObject) configurations.push_back(&root);
  for (const JsonValue& item : root.items) configurations.push_back(&item);
  for (const JsonValue* const configuration : configurations) {
    if (configuration->kind == JsonValue::Kind::kObject) continue;
    throw support::Failure(support::ExitStatus::kTrouble, "{}:{}: expected an object, found {}",
                           path, configuration->line, NameOf(configuration->kind));
  }
  if (!configurations.empty()) return configurations;
  throw support::Failure(support::ExitStatus::kTrouble, "{}:{}: has no configuration", path,
                         root.line);
}

// Interfaces of D-Bus, without what all of them begin with.
std::string PropertyKey(const std::string& area, std::string_view key) {
  constexpr std::string_view kInventory = "xyz.openbmc_project.Inventory.";
  if (key.substr(0, kInventory.size()) == kInventory) key.remove_prefix(kInventory.size());
  key = key.substr(0, kMostNameBytes);
  return area.empty() ? std::string(key) : area + '_' + std::string(key);
}

void ReadConfiguration(const JsonValue& configuration, bool is_only, std::uint32_t file,
                       JsonItems& items, Board& board, losses::Ledger& ledger) {
  const Text name = items.Take(configuration, "Name");
  if (name.text.empty()) return items.Drop(configuration, Reason::kNameless);
  if (HasTemplate(name.text))
    ledger.Changed(name.item, LegalName(name.text), Reason::kKnownAtRunTime);
  if (is_only) board.name = {name.text, losses::kNoItem};
  const std::size_t area =
      board.AreaFor(name, {}, {file, configuration.line, items.PointerOf(configuration)});
  if (const JsonValue* const exposes = Member(configuration, "Exposes")) {
    if (exposes->kind == JsonValue::Kind::kObject)
      EntityReader(*exposes, area, file, items, board, ledger).Read();
    for (const JsonValue& entry : exposes->items)
      EntityReader(entry, area, file, items, board, ledger).Read();
  }
  const std::string prefix = is_only ? "" : LegalKey(name.text);
  for (const JsonMember& member : configuration.members) {
    items.TakeRest(member.value, PropertyKey(prefix, member.key), board.properties);
  }
}

}  // namespace

Board ReadEntityManager(const Sources& sources, const ReadOptions&, losses::Ledger& ledger) {
  Board board;
  for (const Source& source : sources) {
    const auto file = static_cast<std::uint32_t>(ledger.files().size());
    ledger.BeginFile(source.path);
    if (board.name.text.empty())
      board.name.text = std::filesystem::path(source.path).stem().string();
    const JsonValue root =
        settings::ParseJson(source.path, source.text, settings::JsonComments::kSkipped);
    JsonItems items(root, ledger);
    const std::vector<const JsonValue*> configurations = ConfigurationsIn(root, source.path);
    const bool is_only = sources.size() == 1 && configurations.size() == 1;
    for (const JsonValue* const configuration : configurations)
      ReadConfiguration(*configuration, is_only, file, items, board, ledger);
  }
  return board;
}

}  // namespace rux::imports
