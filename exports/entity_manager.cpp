// Configurations of OpenBMC's entity-manager: what sensors are read from, and their thresholds.
#include <cstddef>
#include <cstdint>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "exports/account.h"
#include "exports/formats.h"
#include "exports/sensors.h"
#include "losses/ledger.h"
#include "machine/machine.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/handles.h"
#include "support/json.h"
#include "support/text_stream.h"

namespace rux::exports {
namespace {

namespace language = ruxcomp::language;

// Properties that are not members of the same name.
constexpr char kType[] = "Type";        // without it, what measures is not known
constexpr char kChannel[] = "CHANNEL";  // of a sensor: which one of its device it is

struct ThresholdKind {
  language::EntryId limit;
  const char* direction;
  const char* name;
  int severity;
};
constexpr ThresholdKind kThresholdKinds[] = {
    {language::ENTRY_THRESHOLD_FL, "less than", "lower critical", 1},
    {language::ENTRY_THRESHOLD_WL, "less than", "lower non critical", 0},
    {language::ENTRY_THRESHOLD_WH, "greater than", "upper non critical", 0},
    {language::ENTRY_THRESHOLD_FH, "greater than", "upper critical", 1}};

// "FH_": what the properties begin with that belong to a threshold.
std::string PrefixOf(const ThresholdKind& kind) {
  const std::string_view keyword = language::KeywordOf(kind.limit);
  return std::string(keyword.substr(keyword.rfind('_') + 1)) + '_';
}

const ThresholdKind* ThresholdWith(std::string_view property) {
  for (const ThresholdKind& kind : kThresholdKinds) {
    if (language::HasPrefix(property, PrefixOf(kind))) return &kind;
  }
  return nullptr;
}

bool IsNumber(const std::string& text) {
  static const std::regex number(R"(-?(0|[1-9][0-9]{0,30})(\.[0-9]{1,30})?([eE][-+]?[0-9]{1,3})?)");
  constexpr std::size_t kLongest = 80;
  return text.size() <= kLongest && std::regex_match(text, number);
}

void WriteMember(std::string_view key, std::string_view value, support::JsonObject& json) {
  const std::string text(value);
  if (text == "true" || text == "false") return json.Member(key, text == "true");
  if (IsNumber(text)) return json.Member(key, support::JsonNumber{text});
  json.Member(key, text);
}

// Texts of SYSTEM and PROPERTY sections.
std::string_view MachineText(const machine::Machine& machine, std::uint32_t section,
                             std::string_view name, std::string_view otherwise, Account& account) {
  for (const ruxcomp::Section properties : machine.model().sections(section)) {
    if (const ruxcomp::Entry entry = PropertyOf(properties, name)) {
      account.UsedAsUtf8(properties, entry.identifier());
      return entry.value().text();
    }
  }
  return otherwise;
}

// An entry of Exposes: a device with its sensors, or one sensor by itself.
class Exposed {
 public:
  Exposed(const machine::Machine& machine, const ruxcomp::Section& owner,
          const std::vector<const Sensor*>& sensors, Account& account)
      : machine_(machine), owner_(owner), sensors_(sensors), account_(account) {}

  void Write(support::JsonArray& exposes) {
    if (!PropertyOf(owner_, kType)) {
      for (const Sensor* const sensor : sensors_)
        account_.DropRest(sensor->section, losses::Reason::kNotPlain);
      return;
    }
    exposes.Object([&](support::JsonObject& json) {
      WriteNames(json);
      WriteProperties(owner_, "", json);
      for (const Sensor* const sensor : sensors_) WriteOwn(*sensor, json);
      WriteThresholds(json);
    });
  }

 private:
  bool has_device() const { return owner_.kind() == RUX_SECT_DEVICE; }

  static std::string_view ChannelOf(const Sensor& sensor) {
    return PropertyOf(sensor.section, kChannel).value().text();
  }

  // False for a key that the object has.
  bool Take(const std::string& key) { return keys_.insert(key).second; }

  void WriteText(const std::string& key, std::string_view text, support::JsonObject& json) {
    if (Take(key)) json.Member(key, std::string(text));
  }

  // Of a sensor without a channel, after so many others. A chip that measures temperatures may
  // measure something else besides.
  static std::string NameKey(const Sensor& sensor, std::size_t others) {
    if (others == 0) return "Name";
    if (sensor.unit.symbol == "Pa") return "NamePressure";
    if (sensor.unit.symbol == "%") return "NameHumidity";
    return "Name" + std::to_string(others);
  }

  // The entry's Name, or the names of sensors that have no channels: Name, Name1, Name2.
  void WriteNames(support::JsonObject& json) {
    std::vector<std::string> labels;
    std::size_t unnamed = 0;
    for (const Sensor* const sensor : sensors_) {
      AccountForLabel(sensor->section, account_);
      const std::string channel(ChannelOf(*sensor));
      if (!channel.empty()) {
        labels.push_back(channel);
        continue;
      }
      WriteText(NameKey(*sensor, unnamed), LabelOf(sensor->section), json);
      ++unnamed;
    }
    AccountForLabel(owner_, account_);
    WriteText("Name", LabelOf(owner_), json);
    if (labels.empty()) return;
    keys_.insert("Labels");
    json.Array("Labels", [&](support::JsonArray& list) { list.Items(labels); });
    for (const Sensor* const sensor : sensors_) {
      const std::string channel(ChannelOf(*sensor));
      const std::string usual = std::string(LabelOf(owner_)) + ' ' + channel;
      if (!channel.empty() && LabelOf(sensor->section) != usual)
        WriteText(channel + "_Name", LabelOf(sensor->section), json);
    }
  }

  // What the sensor has beside its owner.
  void WriteOwn(const Sensor& sensor, support::JsonObject& json) {
    if (!has_device()) return;
    const std::string channel(ChannelOf(sensor));
    WriteProperties(sensor.section, channel.empty() ? "" : channel + '_', json);
  }

  void WriteProperties(const ruxcomp::Section& section, const std::string& prefix,
                       support::JsonObject& json) {
    const std::set<std::string_view> others = {kChannel, kDeviceProperty, kLabelProperty};
    for (const ruxcomp::Entry entry : section.entries()) {
      if (language::ClassOf(entry.identifier()) != language::CLASS_Property) continue;
      const std::string name(entry.name());
      const bool is_of_sensor = section.kind() == RUX_SECT_SENSOR;
      if (is_of_sensor && ThresholdWith(name) != nullptr) continue;
      if (others.count(name) != 0 || (is_of_sensor && machine_.DependsOn(name))) {
        if (name != kLabelProperty) account_.Used(section, entry.identifier());
      } else if (Take(prefix + name)) {
        WriteMember(prefix + name, entry.value().text(), json);
        account_.UsedAsUtf8(section, entry.identifier());
      } else {
        account_.Dropped(section, entry.identifier(), losses::Reason::kDuplicate);
      }
    }
  }

  void WriteThresholds(support::JsonObject& json) {
    bool has_any = false;
    for (const Sensor* const sensor : sensors_) has_any = has_any || !sensor->limits.empty();
    if (!has_any || !Take("Thresholds")) return;
    json.Array("Thresholds", [&](support::JsonArray& list) {
      for (std::size_t i = 0; i < sensors_.size(); ++i) {
        for (const SensorLimit& limit : sensors_[i]->limits) {
          for (const ThresholdKind& kind : kThresholdKinds) {
            if (kind.limit == limit.row->source) WriteThreshold(i, limit, kind, list);
          }
        }
      }
    });
  }

  void WriteThreshold(std::size_t place, const SensorLimit& limit, const ThresholdKind& kind,
                      support::JsonArray& list) {
    const Sensor& sensor = *sensors_[place];
    const std::string value = limit.amount.Text();
    AccountForLimit(sensor, limit, limit.amount, value, account_);
    list.Object([&](support::JsonObject& json) {
      json.Member("Direction", kind.direction);
      const std::string channel(ChannelOf(sensor));
      if (!channel.empty()) json.Member("Label", channel);
      if (channel.empty() && sensors_.size() > 1) json.Member("Index", place + 1);
      const bool has_name = WriteOfThreshold(sensor, kind, json);
      if (!has_name) json.Member("Name", kind.name);
      json.Member("Severity", kind.severity);
      json.Member("Value", support::JsonNumber{value});
    });
  }

  // The sensor's properties that belong to it; returns whether a Name is among them.
  bool WriteOfThreshold(const Sensor& sensor, const ThresholdKind& kind,
                        support::JsonObject& json) {
    std::set<std::string> keys = {"Direction", "Label", "Index", "Severity", "Value"};
    const std::size_t others = PrefixOf(kind).size();
    for (const ruxcomp::Entry entry : sensor.section.entries()) {
      if (language::ClassOf(entry.identifier()) != language::CLASS_Property) continue;
      if (ThresholdWith(entry.name()) != &kind) continue;
      const std::string key(entry.name().substr(others));
      if (!keys.insert(key).second) continue;
      WriteMember(key, entry.value().text(), json);
      account_.UsedAsUtf8(sensor.section, entry.identifier());
    }
    return keys.count("Name") != 0;
  }

  const machine::Machine& machine_;
  const ruxcomp::Section owner_;
  const std::vector<const Sensor*>& sensors_;
  Account& account_;
  std::set<std::string> keys_;
};

}  // namespace

void WriteEntityManager(const machine::Machine& machine, Account& account,
                        support::TextStream& out) {
  const std::vector<Sensor> sensors = SensorsOf(machine);
  std::string_view name;
  for (const ruxcomp::Section system : machine.model().sections(RUX_SECT_SYSTEM)) {
    name = system.entry(RUX_ENTRY_MODEL).value().text();
    account.UsedAsUtf8(system, RUX_ENTRY_MODEL);
  }
  support::WriteJson(out, [&](support::JsonObject& json) {
    json.Array("Exposes", [&](support::JsonArray& exposes) {
      for (const DeviceSensors& device : ByDevice(machine, sensors)) {
        if (device.device) Exposed(machine, device.device, device.sensors, account).Write(exposes);
        if (device.device) continue;
        for (const Sensor* const sensor : device.sensors)
          Exposed(machine, sensor->section, {sensor}, account).Write(exposes);
      }
    });
    json.Member("Name", std::string(name));
    json.Member("Probe",
                std::string(MachineText(machine, RUX_SECT_PROPERTY, "Probe", "TRUE", account)));
    json.Member("Type",
                std::string(MachineText(machine, RUX_SECT_PROPERTY, kType, "Board", account)));
  });
}

}  // namespace rux::exports
