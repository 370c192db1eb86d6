// Device trees: monitoring chips and what they measure, thermal zones with their limits, fans.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "imports/board.h"
#include "imports/decimal.h"
#include "imports/formats.h"
#include "imports/formats/conf_features.h"
#include "imports/formats/dtc.h"
#include "imports/formats/flat_tree.h"
#include "imports/formats/readers.h"
#include "losses/ledger.h"
#include "ruxcomp/language/entries.h"

namespace rux::imports {
namespace {

using losses::ItemId;
using losses::Reason;

struct ChipRow {
  std::string_view name;
  std::string_view features;
};
constexpr ChipRow kChips[] = {
#define CHIP(name, features) {name, features},
#include "imports/formats/chips.def"
};

// What the scripts keep of a chip, besides its label.
struct KeptProperty {
  std::string_view property;
  const char* key;
};
constexpr KeptProperty kKeptProperties[] = {
    {"compatible", "COMPATIBLE"},         {"reg", "ADDRESS"},
    {"shunt-resistor", "SHUNT_RESISTOR"}, {"shunt-resistor-micro-ohms", "SHUNT_RESISTOR"},
    {"gpio-fan,speed-map", "SPEED_MAP"},  {"cooling-levels", "COOLING_LEVELS"}};

// The limits that trips of these types are; the others begin to cool.
struct TripType {
  std::string_view type;
  language::EntryId limit;
};
constexpr TripType kTripTypes[] = {{"critical", language::ENTRY_THRESHOLD_FH},
                                   {"hot", language::ENTRY_THRESHOLD_WH}};

constexpr std::string_view kTachChannels[] = {"aspeed,fan-tach-ch", "tach-ch"};

const ChipRow* FindChip(const TreeNode& node) {
  const TreeProperty* const compatible = node.Find("compatible");
  if (compatible == nullptr) return nullptr;
  for (const std::string_view text : compatible->Texts()) {
    const std::string_view name = text.substr(text.find(',') + 1);
    for (const ChipRow& row : kChips) {
      if (row.name == name) return &row;
    }
  }
  return nullptr;
}

std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    words.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return words;
}

bool IsOff(const TreeNode& node) {
  const TreeProperty* const status = node.Find("status");
  if (status == nullptr) return false;
  const std::string text = status->Text();
  return text != "okay" && text != "ok";
}

class TreeBoard {
 public:
  TreeBoard(const std::string& path, std::string_view bytes, Board& board, losses::Ledger& ledger)
      : tree_(path, bytes), board_(board), ledger_(ledger) {
    ledger.BeginFile(path);
    file_ = static_cast<std::uint32_t>(ledger.files().size() - 1);
    if (board.name.text.empty()) board.name.text = std::filesystem::path(path).stem().string();
  }

  void Read() {
    for (std::size_t i = 0; i < tree_.nodes().size(); ++i) NoteNode(i);
    const Text model = Value(0, "model");
    if (!model.text.empty()) board_.name = model;
    for (std::size_t i = 1; i < tree_.nodes().size(); ++i) {
      const ChipRow* const chip = is_off_[i] ? nullptr : FindChip(Node(i));
      if (chip != nullptr) AddChip(i, *chip);
    }
    // Zones and channels refer to chips.
    for (std::size_t i = 1; i < tree_.nodes().size(); ++i) {
      if (!is_off_[i]) AddOther(i);
    }
  }

 private:
  const TreeNode& Node(std::size_t node) const { return tree_.nodes()[node]; }

  void NoteNode(std::size_t place) {
    const TreeNode& node = Node(place);
    children_.emplace_back();
    if (place > 0) children_[node.parent].push_back(place);
    is_off_.push_back(place > 0 && (is_off_[node.parent] || IsOff(node)));
    items_.emplace_back();
    for (const TreeProperty& property : node.properties) {
      items_.back().push_back(
          ledger_.Note({0, node.path + ':' + std::string(property.name), property.Text()}));
    }
    if (is_off_.back()) Drop(place, Reason::kDisabled);
    if (node.path != "/aliases") return;
    for (std::size_t i = 0; i < node.properties.size(); ++i)
      aliases_.emplace(node.properties[i].Text(),
                       Text{std::string(node.properties[i].name), items_.back()[i]});
  }

  // Until the scripts have something of them.
  void Drop(std::size_t node, Reason reason) {
    for (const ItemId item : items_[node]) ledger_.Dropped(item, reason);
  }

  ItemId ItemFor(std::size_t node, const TreeProperty* property) const {
    return items_[node][static_cast<std::size_t>(property - Node(node).properties.data())];
  }

  // Empty when the node does not have the property.
  Text Value(std::size_t node, std::string_view name) const {
    const TreeProperty* const property = Node(node).Find(name);
    if (property == nullptr) return {};
    return {property->Text(), ItemFor(node, property)};
  }

  Sensor NewSensor(std::size_t node, Text name, Quantity quantity, std::string_view area) {
    Sensor sensor;
    sensor.origin = {file_, 0, Node(node).path};
    sensor.name = std::move(name);
    sensor.quantity = quantity;
    sensor.area = board_.AreaFor({std::string(area), losses::kNoItem}, {}, sensor.origin);
    return sensor;
  }

  // What the tree calls the bus: i2c5, if an alias says so.
  std::string BusOf(std::size_t node) {
    const TreeNode& bus = Node(Node(node).parent);
    const auto alias = aliases_.find(bus.path);
    if (alias == aliases_.end()) return std::string(bus.name);
    ledger_.Used(alias->second.item);
    return alias->second.text;
  }

  void AddChip(std::size_t place, const ChipRow& chip) {
    const TreeNode& node = Node(place);
    Drop(place, Reason::kNoPlace);
    Device device{{std::string(node.name), losses::kNoItem}, {}, {file_, 0, node.path}};
    const std::string bus = BusOf(place);
    if (!bus.empty()) device.properties.push_back({"BUS", {bus, losses::kNoItem}});
    for (const KeptProperty& kept : kKeptProperties) {
      Text value = Value(place, kept.property);
      if (value.item != losses::kNoItem) device.properties.push_back({kept.key, std::move(value)});
    }
    devices_.emplace(place, board_.devices.size());
    const std::vector<std::string> features = Words(chip.features);
    Text label = Value(place, "label");
    if (features.empty()) device.name = label.text.empty() ? device.name : label;
    board_.devices.push_back(std::move(device));
    if (label.text.empty()) label.text = node.name;
    for (const std::string& feature : features) AddFeature(place, feature, features, label, bus);
  }

  // Of a chip with several, each has its number; that of a child is one less.
  void AddFeature(std::size_t chip, const std::string& feature,
                  const std::vector<std::string>& features, Text label, const std::string& area) {
    const std::string number = feature.substr(feature.find_first_of("0123456789"));
    const auto has_number = [&](const std::string& other) {
      return other.substr(other.find_first_of("0123456789")) == number;
    };
    bool is_only = features.size() == 1;
    for (const std::size_t child : children_[chip]) {
      const Text reg = Value(child, "reg");
      const TreeProperty* const property = Node(child).Find("reg");
      if (property == nullptr || property->Cells().size() != 1) continue;
      if (std::to_string(std::uint64_t{property->Cells().front()} + 1) != number) continue;
      if (is_off_[child]) return;
      Drop(child, Reason::kNoPlace);
      ledger_.Used(reg.item);
      const Text name = Value(child, "label");
      if (name.text.empty()) continue;
      label = name;
      is_only = std::count_if(features.begin(), features.end(), has_number) == 1;
    }
    if (!is_only) label.text += ' ' + feature;
    Sensor sensor = NewSensor(chip, label, *ConfNameOf(feature).quantity, area);
    sensor.device = devices_.at(chip);
    sensor.properties.push_back({"FEATURE", {feature, losses::kNoItem}});
    board_.sensors.push_back(std::move(sensor));
  }

  void AddOther(std::size_t place) {
    const TreeNode& node = Node(place);
    if (Node(node.parent).path == "/thermal-zones") AddZone(place);
    if (Value(place, "compatible").text == "iio-hwmon") AddChannels(place);
    for (const std::string_view name : kTachChannels) {
      const TreeProperty* const channels = node.Find(name);
      if (channels != nullptr) AddFan(place, *channels);
    }
  }

  void AddZone(std::size_t place) {
    const TreeNode& node = Node(place);
    Drop(place, Reason::kNoPlace);
    Sensor sensor = NewSensor(place, {std::string(node.name), losses::kNoItem},
                              Quantity::kTemperature, Node(node.parent).name);
    const TreeProperty* const source = node.Find("thermal-sensors");
    if (source != nullptr && !source->Cells().empty()) {
      const std::optional<std::size_t> target = tree_.FindHandle(source->Cells().front());
      const ItemId item = ItemFor(place, source);
      if (target) {
        const auto device = devices_.find(*target);
        if (device != devices_.end()) sensor.device = device->second;
        sensor.properties.push_back({"SENSOR", {Node(*target).path, losses::kNoItem}});
        ledger_.Changed(item, Node(*target).path, Reason::kRewritten);
      } else {
        ledger_.Dropped(item, Reason::kNoOwner);
      }
    }
    for (const std::size_t part : children_[place]) {
      if (Node(part).name != "trips") continue;
      for (const std::size_t trip : children_[part]) AddTrip(trip, sensor);
    }
    board_.sensors.push_back(std::move(sensor));
  }

  void AddTrip(std::size_t trip, Sensor& sensor) {
    Drop(trip, Reason::kNoSuchLimit);
    const Text type = Value(trip, "type");
    const TreeProperty* const temperature = Node(trip).Find("temperature");
    for (const TripType& row : kTripTypes) {
      if (row.type != type.text || temperature == nullptr || temperature->Cells().size() != 1)
        continue;
      const auto thousandths = static_cast<std::int32_t>(temperature->Cells().front());
      constexpr int kThousandth = -3;
      ledger_.Used(type.item);
      AddLimit(sensor, {row.limit, Decimal(thousandths, kThousandth), ItemFor(trip, temperature)},
               ledger_);
    }
  }

  // A list of handles, each with as many cells after it as its node says.
  void AddChannels(std::size_t place) {
    Drop(place, Reason::kNoPlace);
    ledger_.Used(Value(place, "compatible").item);
    const TreeProperty* const list = Node(place).Find("io-channels");
    if (list == nullptr) return;
    const ItemId item = ItemFor(place, list);
    const std::vector<std::uint32_t> cells = list->Cells();
    for (std::size_t at = 0; at < cells.size();) {
      const std::optional<std::size_t> target = tree_.FindHandle(cells[at++]);
      if (!target) return ledger_.Dropped(item, Reason::kNoOwner);
      const TreeProperty* const count = Node(*target).Find("#io-channel-cells");
      const std::size_t rest = count == nullptr || count->Cells().empty() ? 0 : count->Cells()[0];
      std::string channel(Node(*target).name);
      for (std::size_t i = 0; i < rest && at < cells.size(); ++i)
        channel += ' ' + std::to_string(cells[at++]);
      Sensor sensor =
          NewSensor(place, {channel, losses::kNoItem}, Quantity::kOther, Node(place).name);
      sensor.properties.push_back({"CHANNEL", {channel, losses::kNoItem}});
      board_.sensors.push_back(std::move(sensor));
      ledger_.Used(item);
    }
  }

  void AddFan(std::size_t place, const TreeProperty& channels) {
    const TreeNode& node = Node(place);
    Drop(place, Reason::kNoPlace);
    for (const char byte : channels.bytes) {
      const std::string channel = std::to_string(static_cast<unsigned char>(byte));
      const std::string rest = channels.bytes.size() == 1 ? "" : " tach " + channel;
      Sensor sensor = NewSensor(place, {std::string(node.name) + rest, losses::kNoItem},
                                Quantity::kFan, Node(node.parent).name);
      sensor.properties.push_back({"TACH", {channel, losses::kNoItem}});
      board_.sensors.push_back(std::move(sensor));
    }
    ledger_.Used(ItemFor(place, &channels));
  }

  const FlatTree tree_;
  Board& board_;
  losses::Ledger& ledger_;
  std::uint32_t file_;
  std::vector<std::vector<std::size_t>> children_;    // by node
  std::vector<bool> is_off_;                          // by node
  std::vector<std::vector<ItemId>> items_;            // by node and property
  std::map<std::string, Text, std::less<>> aliases_;  // by path
  std::map<std::size_t, std::size_t> devices_;        // in the board, by node
};

}  // namespace

Board ReadDeviceTree(const Sources& sources, const ReadOptions&, losses::Ledger& ledger) {
  Board board;
  for (const Source& source : sources) TreeBoard(source.path, source.text, board, ledger).Read();
  return board;
}

Board ReadDeviceTreeSource(const Sources& sources, const ReadOptions&, losses::Ledger& ledger) {
  Board board;
  for (const Source& source : sources) {
    const std::string bytes = CompileDeviceTree(source.path, source.text);
    TreeBoard(source.path, bytes, board, ledger).Read();
  }
  return board;
}

}  // namespace rux::imports
