// Configurations of OpenBMC's entity-manager: what sensors are read from, and their thresholds.
#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "exports/account.h"
#include "exports/formats.h"
#include "exports/members.h"
#include "exports/sensors.h"
#include "losses/ledger.h"
#include "machine/machine.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/handles.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/text_stream.h"

namespace rux::exports {
namespace {

namespace language = ruxcomp::language;

// Properties that are not members of the same name.
constexpr char kType[] = "Type";  // without it, what measures is not known
constexpr char kLabels[] = "Labels";
constexpr char kThresholds[] = "Thresholds";
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

// use(section, entry) for each property of the whole machine.
template <class Use>
void ForEachProperty(const machine::Machine& machine, Use use) {
  for (const ruxcomp::Section section : machine.model().sections(RUX_SECT_PROPERTY)) {
    for (const ruxcomp::Entry entry : section.entries()) use(section, entry);
  }
}

// What a configuration is for. Its properties have the names of its members: of a list, Probe_0,
// Probe_1 and so on.
class Purpose {
 public:
  Purpose(const machine::Machine& machine, Account& account) : account_(account) {
    ForEachProperty(machine, [&](const ruxcomp::Section& section, const ruxcomp::Entry& entry) {
      Take(section, entry);
    });
    if (probe_.empty() && probes_.empty()) ExpectOne(machine);
  }

  void Write(support::JsonObject& json) const {
    if (probes_.empty()) {
      json.Member(kProbe, probe_.empty() ? "TRUE" : probe_);
    } else {
      json.Array(kProbe, [&](support::JsonArray& list) { list.Items(probes_); });
    }
    json.Member(kType, type_.empty() ? "Board" : type_);
  }

 private:
  static constexpr char kProbe[] = "Probe";

  void Take(const ruxcomp::Section& section, const ruxcomp::Entry& entry) {
    const std::string_view text = entry.value().text();
    if (entry.name() == kType && type_.empty()) {
      type_ = text;
    } else if (entry.name() == kProbe && probes_.empty()) {
      probe_ = text;
    } else if (probe_.empty() && entry.name() == kProbe + ('_' + std::to_string(probes_.size()))) {
      probes_.emplace_back(text);
    } else {
      return;
    }
    account_.UsedAsUtf8(section, entry.identifier());
  }

  // An import of several configurations writes the name of the group of each before its
  // properties.
  static void ExpectOne(const machine::Machine& machine) {
    ForEachProperty(machine, [&](const ruxcomp::Section&, const ruxcomp::Entry& entry) {
      const std::string name(entry.name());
      const std::size_t probe = name.find(std::string("_") + kProbe);
      if (probe == std::string::npos) return;
      if (!machine.model().section_named(RUX_SECT_GROUP, name.substr(0, probe))) return;
      throw support::Failure(support::ExitStatus::kTrouble,
                             "{} has the Probes of several configurations, such as {}: a "
                             "configuration has one",
                             machine.name(), name);
    });
  }

  Account& account_;
  std::string probe_;
  std::vector<std::string> probes_;  // of a list
  std::string type_;
};

// An entry of Exposes: a device with its sensors, or one sensor by itself.
class Exposed {
 public:
  Exposed(const machine::Machine& machine, const ruxcomp::Section& owner,
          const std::vector<const Sensor*>& sensors, Account& account)
      : machine_(machine), owner_(owner), sensors_(sensors), account_(account) {}

  void Write(support::JsonArray& exposes) {
    if (!PropertyOf(owner_, kType)) {
      for (const Sensor* const sensor : sensors_)
        account_.DropRest(sensor->section, losses::Reason::kNoOwner);
      return;
    }
    exposes.Object([&](support::JsonObject& json) {
      WriteNames(json);
      AddProperties(owner_, "");
      for (const Sensor* const sensor : sensors_) AddOwn(*sensor);
      members_.Write(json);
      WriteThresholds(json);
    });
  }

 private:
  bool has_device() const { return owner_.kind() == RUX_SECT_DEVICE; }

  static std::string_view ChannelOf(const Sensor& sensor) {
    return PropertyOf(sensor.section, kChannel).value().text();
  }

  // Of a sensor without a channel, after that number of others. A chip that measures temperatures
  // may measure something else besides.
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
      const std::string_view label = LabelOf(sensor->section);
      if (channel.empty()) {
        members_.AddName(NameKey(*sensor, unnamed++), label);
      } else {
        labels.push_back(channel);
        if (label != std::string(LabelOf(owner_)) + ' ' + channel)
          members_.AddName(channel + "_Name", label);
      }
    }
    AccountForLabel(owner_, account_);
    members_.AddName("Name", LabelOf(owner_));
    if (!labels.empty()) json.Array(kLabels, [&](support::JsonArray& list) { list.Items(labels); });
  }

  // What the sensor has beside its owner.
  void AddOwn(const Sensor& sensor) {
    if (!has_device()) return;
    const std::string channel(ChannelOf(sensor));
    AddProperties(sensor.section, channel.empty() ? "" : channel + '_');
  }

  // False for what is there already.
  bool Add(const std::string& prefix, const std::string& name, std::string_view text) {
    if (!prefix.empty()) return members_.Add(prefix + name, text);
    const bool is_list =
        language::HasPrefix(name, kLabels) || language::HasPrefix(name, kThresholds);
    return !is_list && members_.AddNested(name, text);
  }

  void AddProperties(const ruxcomp::Section& section, const std::string& prefix) {
    const bool is_sensor = section.kind() == RUX_SECT_SENSOR;
    for (const ruxcomp::Entry entry : section.entries()) {
      if (language::ClassOf(entry.identifier()) != language::CLASS_Property) continue;
      const std::string name(entry.name());
      if (name == kLabelProperty || (is_sensor && ThresholdWith(name) != nullptr)) continue;
      const bool is_elsewhere =
          name == kChannel || name == kDeviceProperty || (is_sensor && machine_.DependsOn(name));
      const std::string_view text = entry.value().text();
      const bool is_added = is_elsewhere || Add(prefix, name, text);
      if (is_added) {
        account_.UsedAsUtf8(section, entry.identifier());
      } else {
        account_.Dropped(section, entry.identifier(), losses::Reason::kDuplicate);
      }
    }
  }

  void WriteThresholds(support::JsonObject& json) {
    bool has_any = false;
    for (const Sensor* const sensor : sensors_) has_any = has_any || !sensor->limits.empty();
    if (!has_any) return;
    json.Array(kThresholds, [&](support::JsonArray& list) {
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
  Members members_;
};

}  // namespace

void WriteEntityManager(const machine::Machine& machine, Account& account,
                        support::TextStream& out) {
  const Purpose purpose(machine, account);
  const std::vector<Sensor> sensors = SensorsOf(machine);
  std::string_view name;
  for (const ruxcomp::Section system : machine.model().sections(RUX_SECT_SYSTEM)) {
    name = system.entry(RUX_ENTRY_MODEL).value().text();
    account.UsedAsUtf8(system, RUX_ENTRY_MODEL);
  }
  support::WriteJson(out, [&](support::JsonObject& json) {
    json.Array("Exposes", [&](support::JsonArray& exposes) {
      for (const DeviceSensors& device : ByDevice(machine, sensors)) {
        if (device.device) {
          Exposed(machine, device.device, device.sensors, account).Write(exposes);
          continue;
        }
        for (const Sensor* const sensor : device.sensors)
          Exposed(machine, sensor->section, {sensor}, account).Write(exposes);
      }
    });
    json.Member("Name", std::string(name));
    purpose.Write(json);
  });
}

}  // namespace rux::exports
