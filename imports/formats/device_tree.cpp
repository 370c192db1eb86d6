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
#include "imports/formats/tree_chips.h"
#include "imports/formats/tree_items.h"
#include "losses/ledger.h"
#include "ruxcomp/language/entries.h"

namespace rux::imports {
namespace {

using losses::ItemId;
using losses::Reason;

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

class TreeBoard {
 public:
  TreeBoard(const std::string& path, std::string_view bytes, Board& board, losses::Ledger& ledger)
      : tree_(path, bytes),
        board_(board),
        ledger_(ledger),
        file_(static_cast<std::uint32_t>(ledger.files().size() - 1)),
        items_(tree_, ledger) {
    if (board.name.text.empty()) board.name.text = std::filesystem::path(path).stem().string();
  }

  void Read() {
    FindAliases();
    const Text model = Value(0, "model");
    if (!model.text.empty()) {
      board_.name = model;
      board_.origin = {file_, 0, Node(0).path};
    }
    for (std::size_t i = 1; i < tree_.nodes().size(); ++i) {
      const auto features = items_.IsOff(i) ? std::nullopt : FeaturesOf(Node(i));
      if (features) AddChip(i, *features);
    }
    // Zones and channels refer to chips.
    for (std::size_t i = 1; i < tree_.nodes().size(); ++i) {
      if (!items_.IsOff(i)) AddOther(i);
    }
  }

 private:
  const TreeNode& Node(std::size_t node) const { return items_.Node(node); }
  Text Value(std::size_t node, std::string_view name) const { return items_.Value(node, name); }

  void FindAliases() {
    const std::optional<std::size_t> aliases = tree_.FindPath("/aliases");
    if (!aliases) return;
    for (const TreeProperty& property : Node(*aliases).properties)
      aliases_.emplace(property.Text(),
                       Text{std::string(property.name), items_.ItemFor(*aliases, &property)});
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

  void AddChip(std::size_t place, const std::vector<std::string>& features) {
    const TreeNode& node = Node(place);
    items_.Drop(place, Reason::kNoPlace);
    Device device{{std::string(node.name), losses::kNoItem}, {}, {file_, 0, node.path}};
    const std::string bus = BusOf(place);
    if (!bus.empty()) device.properties.push_back({"BUS", {bus, losses::kNoItem}});
    for (const KeptProperty& kept : kKeptProperties) {
      Text value = Value(place, kept.property);
      if (value.item != losses::kNoItem) device.properties.push_back({kept.key, std::move(value)});
    }
    devices_.emplace(place, board_.devices.size());
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
    for (const std::size_t child : items_.ChildrenOf(chip)) {
      const Text reg = Value(child, "reg");
      const TreeProperty* const property = Node(child).Find("reg");
      if (property == nullptr || property->Cells().size() != 1) continue;
      if (std::to_string(std::uint64_t{property->Cells().front()} + 1) != number) continue;
      if (items_.IsOff(child)) return;
      items_.Drop(child, Reason::kNoPlace);
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

  // A handle of a list, with as many cells after it as its node says.
  struct Reference {
    std::optional<std::size_t> node;
    std::string channel;  // "2 0" of two cells; empty: none
  };
  Reference TakeReference(const std::vector<std::uint32_t>& cells, std::size_t& at,
                          std::string_view count_name) {
    Reference reference{tree_.FindHandle(cells[at++]), ""};
    if (!reference.node) return reference;
    const TreeProperty* const count = Node(*reference.node).Find(count_name);
    const std::size_t rest = count == nullptr || count->Cells().empty() ? 0 : count->Cells()[0];
    ledger_.Used(Value(*reference.node, count_name).item);
    for (std::size_t i = 0; i < rest && at < cells.size(); ++i) {
      if (i > 0) reference.channel += ' ';
      reference.channel += std::to_string(cells[at++]);
    }
    return reference;
  }

  void AddZone(std::size_t place) {
    const TreeNode& node = Node(place);
    Sensor sensor = NewSensor(place, {std::string(node.name), losses::kNoItem},
                              Quantity::kTemperature, Node(node.parent).name);
    const TreeProperty* const source = node.Find("thermal-sensors");
    if (source != nullptr && !source->Cells().empty())
      AddSource(*source, items_.ItemFor(place, source), sensor);
    items_.Drop(place, Reason::kNoPlace);
    for (const std::size_t part : items_.ChildrenOf(place)) {
      if (Node(part).name != "trips") continue;
      for (const std::size_t trip : items_.ChildrenOf(part)) AddTrip(trip, sensor);
    }
    board_.sensors.push_back(std::move(sensor));
  }

  // What a zone is the temperature of: its first reference. Channel 1 of a chip is its temp2.
  void AddSource(const TreeProperty& list, ItemId item, Sensor& sensor) {
    const std::vector<std::uint32_t> cells = list.Cells();
    std::size_t at = 0;
    const Reference source = TakeReference(cells, at, "#thermal-sensor-cells");
    if (!source.node) return ledger_.Dropped(item, Reason::kNoOwner);
    const TreeNode& node = Node(*source.node);
    sensor.properties.push_back({"SENSOR", {node.path, losses::kNoItem}});
    std::string after = node.path;
    if (!source.channel.empty()) {
      sensor.properties.push_back({"CHANNEL", {source.channel, losses::kNoItem}});
      after += ' ' + source.channel;
    }
    const auto device = devices_.find(*source.node);
    if (device != devices_.end()) {
      sensor.device = device->second;
      for (const std::string& feature : FeaturesOf(node).value_or(std::vector<std::string>())) {
        if (IsFeatureOf(source.channel, feature))
          sensor.properties.push_back({"FEATURE", {feature, losses::kNoItem}});
      }
    }
    ledger_.Changed(item, after, at == cells.size() ? Reason::kRewritten : Reason::kSimplified);
  }

  static bool IsFeatureOf(const std::string& channel, const std::string& feature) {
    const std::optional<Decimal> number = Decimal::In(channel);
    const std::optional<std::int64_t> place = number ? number->WholeAt(0) : std::nullopt;
    return place && feature == "temp" + std::to_string(*place + 1);
  }

  // The first trip of its type is the limit.
  void AddTrip(std::size_t trip, Sensor& sensor) {
    const Text type = Value(trip, "type");
    const TreeProperty* const temperature = Node(trip).Find(kTemperature);
    Limit limit{language::ENTRY_THRESHOLD_FH, {}, losses::kNoItem};
    for (const TripType& row : kTripTypes) {
      if (row.type != type.text || temperature == nullptr || temperature->Cells().size() != 1)
        continue;
      constexpr int kThousandth = -3;
      limit = {row.limit,
               Decimal(SignedCell(*temperature), kThousandth),
               items_.ItemFor(trip, temperature),
               {type.item},
               {}};
      AddLimit(sensor, limit, ledger_);
    }
    for (const ItemId item : items_.ItemsOf(trip)) {
      const bool is_limit =
          limit.item != losses::kNoItem && (item == limit.item || item == type.item);
      if (!is_limit) ledger_.Dropped(item, Reason::kNoSuchLimit);
    }
  }

  void AddChannels(std::size_t place) {
    items_.Drop(place, Reason::kNoPlace);
    ledger_.Used(Value(place, "compatible").item);
    const TreeProperty* const list = Node(place).Find("io-channels");
    if (list == nullptr) return;
    const ItemId item = items_.ItemFor(place, list);
    const std::vector<std::uint32_t> cells = list->Cells();
    for (std::size_t at = 0; at < cells.size();) {
      const Reference source = TakeReference(cells, at, "#io-channel-cells");
      if (!source.node) return ledger_.Dropped(item, Reason::kNoOwner);
      std::string channel(Node(*source.node).name);
      if (!source.channel.empty()) channel += ' ' + source.channel;
      Sensor sensor =
          NewSensor(place, {channel, losses::kNoItem}, Quantity::kOther, Node(place).name);
      sensor.properties.push_back({"CHANNEL", {channel, losses::kNoItem}});
      board_.sensors.push_back(std::move(sensor));
      ledger_.Used(item);
    }
  }

  void AddFan(std::size_t place, const TreeProperty& channels) {
    const TreeNode& node = Node(place);
    items_.Drop(place, Reason::kNoPlace);
    for (const char byte : channels.bytes) {
      const std::string channel = std::to_string(static_cast<unsigned char>(byte));
      const std::string rest = channels.bytes.size() == 1 ? "" : " tach " + channel;
      Sensor sensor = NewSensor(place, {std::string(node.name) + rest, losses::kNoItem},
                                Quantity::kFan, Node(node.parent).name);
      sensor.properties.push_back({"TACH", {channel, losses::kNoItem}});
      board_.sensors.push_back(std::move(sensor));
    }
    ledger_.Used(items_.ItemFor(place, &channels));
  }

  const FlatTree tree_;
  Board& board_;
  losses::Ledger& ledger_;
  std::uint32_t file_;
  TreeItems items_;
  std::map<std::string, Text, std::less<>> aliases_;  // by path
  std::map<std::size_t, std::size_t> devices_;        // in the board, by node
};

}  // namespace

Board ReadDeviceTree(const Sources& sources, const ReadOptions&, losses::Ledger& ledger) {
  Board board;
  for (const Source& source : sources) {
    ledger.BeginFile(source.path);
    TreeBoard(source.path, source.text, board, ledger).Read();
  }
  return board;
}

Board ReadDeviceTreeSource(const Sources& sources, const ReadOptions&, losses::Ledger& ledger) {
  Board board;
  for (const Source& source : sources) {
    ledger.BeginFile(source.path);
    const std::string bytes = CompileDeviceTree(source.path, source.text);
    TreeBoard(source.path, bytes, board, ledger).Read();
  }
  return board;
}

}  // namespace rux::imports
