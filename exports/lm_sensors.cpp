// sensors.conf of lm-sensors: labels, conversions and limits of what monitoring chips measure.
#include <fmt/format.h>

#include <algorithm>
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
#include "lists/formats.h"
#include "lists/list.h"
#include "losses/ledger.h"
#include "machine/machine.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/model/handles.h"
#include "support/safe_text.h"
#include "support/text_stream.h"
#include "support/utf8.h"

namespace rux::exports {
namespace {

namespace language = ruxcomp::language;

// The properties that state where a sensor is: a feature of a device with chips.
constexpr char kChips[] = "CHIP";
constexpr char kAdapter[] = "ADAPTER";  // whose bus a chip is on: "i2c-0"
constexpr char kFeature[] = "FEATURE";
constexpr char kFactor[] = "FACTOR";
constexpr char kOffset[] = "OFFSET";

// What features measure, by what their names begin with.
struct FeatureKind {
  std::string_view prefix;
  std::string_view symbol;  // of the unit
  bool has_critical;        // limits
};
constexpr FeatureKind kFeatureKinds[] = {
    {"in", "V", true},   {"temp", "C", true},    {"fan", "RPM", false},   {"power", "W", true},
    {"curr", "A", true}, {"energy", "J", false}, {"humidity", "%", false}};

// Null for names that are not those of features.
const FeatureKind* KindOf(std::string_view feature) {
  const std::size_t number = feature.find_first_of("0123456789");
  const bool has_rest = feature.find_first_not_of("0123456789", number) != std::string_view::npos;
  if (number == std::string_view::npos || has_rest) return nullptr;
  for (const FeatureKind& row : kFeatureKinds) {
    if (feature.substr(0, number) == row.prefix) return &row;
  }
  return nullptr;
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  while (!text.empty()) {
    const support::Character character = support::FirstCharacter(text);
    text.remove_prefix(character.bytes.size());
    const bool is_special = character.code == '"' || character.code == '\\';
    if (support::IsSafe(character) && !is_special) {
      quoted += character.bytes;
      continue;
    }
    for (const char c : character.bytes)
      quoted += fmt::format("\\{:03o}", static_cast<unsigned char>(c));
  }
  return quoted + '"';
}

// The names of chips between blanks; none when one of them is not such a name.
std::vector<std::string> ChipsIn(std::string_view text) {
  static const std::regex chip(R"((\*|[^-*"\\\s]+)(-\*|)"
                               R"(-(isa|pci|virtual|acpi|hid|mdio|scsi|spi)-(\*|[0-9a-f]+)|)"
                               R"(-i2c-(\*|[0-9]+)-(\*|[0-9a-f]+)))");
  std::vector<std::string> chips;
  constexpr std::size_t kLongest = 200;  // of a name, for the expression
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string name(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (name.size() > kLongest || !std::regex_match(name, chip)) return {};
    chips.push_back(name);
  }
  return chips;
}

// The buses of chips that say which one, such as "i2c-0".
std::set<std::string> BusesOf(const std::vector<std::string>& chips) {
  static const std::regex numbered("-(i2c-[0-9]+)-");
  std::set<std::string> buses;
  for (const std::string& chip : chips) {
    std::smatch found;
    if (std::regex_search(chip, found, numbered)) buses.insert(found[1]);
  }
  return buses;
}

// A quotient of whole numbers, such as "53/8".
bool IsRatio(std::string_view text) {
  static const std::regex ratio("-?[0-9]{1,18}(/[1-9][0-9]{0,17})?");
  constexpr std::size_t kLongest = 40;
  return text.size() <= kLongest && std::regex_match(std::string(text), ratio);
}

// The attribute of a feature that is the limit; empty when there is none.
std::string_view AttributeOf(language::EntryId limit, const FeatureKind& kind) {
  const bool is_critical =
      limit == language::ENTRY_THRESHOLD_FL || limit == language::ENTRY_THRESHOLD_FH;
  if (is_critical && !kind.has_critical) return {};
  for (const lists::Meaning& meaning : lists::FormatFor("sensors", "").meanings) {
    if (meaning.entry == limit) return meaning.name;
  }
  return {};
}

class ConfWriter {
 public:
  ConfWriter(const machine::Machine& machine, Account& account, support::TextStream& out)
      : machine_(machine), account_(account), out_(out) {}

  void Write() {
    const std::vector<Sensor> sensors = SensorsOf(machine_);
    for (const DeviceSensors& device : ByDevice(machine_, sensors)) WriteChip(device);
  }

 private:
  void WriteChip(const DeviceSensors& chip) {
    const ruxcomp::Entry property = PropertyOf(chip.device, kChips);
    const std::vector<std::string> names = ChipsIn(property.value().text());
    if (names.empty() || chip.sensors.empty() || !WriteBuses(chip.device, BusesOf(names))) {
      for (const Sensor* const sensor : chip.sensors)
        account_.DropRest(sensor->section, losses::Reason::kNoOwner);
      return;
    }
    account_.Used(chip.device, property.identifier());
    out_ += "\nchip";
    for (const std::string& name : names) out_ += ' ' + Quoted(name);
    out_ += '\n';
    for (const Sensor* const sensor : chip.sensors) WriteFeature(*sensor);
  }

  // The statements that say what the buses are; false when that is not known.
  bool WriteBuses(const ruxcomp::Section& device, const std::set<std::string>& buses) {
    const ruxcomp::Entry adapter = PropertyOf(device, kAdapter);
    if (buses.empty() || !adapter) return buses.empty();
    account_.Used(device, adapter.identifier());
    for (const std::string& bus : buses) {
      if (buses_.insert(bus).second)
        out_ += fmt::format("\nbus {} {}\n", Quoted(bus), Quoted(adapter.value().text()));
    }
    return true;
  }

  void WriteFeature(const Sensor& sensor) {
    const ruxcomp::Entry property = PropertyOf(sensor.section, kFeature);
    const std::string feature(property.value().text());
    const FeatureKind* const kind = KindOf(feature);
    if (kind == nullptr) return account_.DropRest(sensor.section, losses::Reason::kNotUnderstood);
    account_.Used(sensor.section, property.identifier());
    account_.Used(sensor.section, PropertyOf(sensor.section, kDeviceProperty).identifier());
    std::string statements = ComputeOf(sensor, feature);
    for (const SensorLimit& limit : sensor.limits)
      statements += SettingOf(sensor, limit, feature, *kind);
    AccountForLabel(sensor.section, account_);
    const std::string_view label = LabelOf(sensor.section);
    // A feature without a statement would not be in the file.
    if (label != feature || statements.empty())
      out_ += fmt::format("  label {} {}\n", feature, Quoted(label));
    out_ += statements;
    for (const ruxcomp::Entry entry : sensor.section.entries()) {
      if (entry.has_name() && machine_.DependsOn(std::string(entry.name())))
        account_.Used(sensor.section, entry.identifier());
    }
  }

  // Of a property that is a quotient; the text of the other when there is none.
  std::string RatioIn(const Sensor& sensor, const char* name, const char* otherwise) {
    const ruxcomp::Entry entry = PropertyOf(sensor.section, name);
    if (!entry) return otherwise;
    std::string text(entry.value().text());
    if (!IsRatio(text)) {
      account_.Dropped(sensor.section, entry.identifier(), losses::Reason::kNotANumber);
      return otherwise;
    }
    account_.Used(sensor.section, entry.identifier());
    return text;
  }

  // Statements: lines, or none.
  std::string ComputeOf(const Sensor& sensor, const std::string& feature) {
    const std::string factor = RatioIn(sensor, kFactor, "1");
    const std::string offset = RatioIn(sensor, kOffset, "0");
    std::string reading;  // what is done with the number of the chip
    std::string writing = "@";
    if (offset != "0") {
      reading = fmt::format(" + ({})", offset);
      writing = fmt::format("(@ - ({}))", offset);
    }
    if (factor != "1") {
      reading.insert(0, fmt::format(" * ({})", factor));
      writing += fmt::format(" / ({})", factor);
    }
    if (reading.empty()) return {};
    return fmt::format("  compute {} @{}, {}\n", feature, reading, writing);
  }

  std::string SettingOf(const Sensor& sensor, const SensorLimit& limit, const std::string& feature,
                        const FeatureKind& kind) {
    const std::uint32_t identifier = limit.row->compiled;
    if (sensor.unit.symbol != kind.symbol) {
      account_.Dropped(sensor.section, identifier, losses::Reason::kNotUnderstood);
      return {};
    }
    const std::string_view attribute = AttributeOf(limit.row->source, kind);
    if (attribute.empty()) {
      account_.Dropped(sensor.section, identifier, losses::Reason::kNoSuchLimit);
      return {};
    }
    const std::string text = limit.amount.Text();
    AccountForLimit(sensor, limit, limit.amount, text, account_);
    return fmt::format("  set {}_{} {}\n", feature, attribute, text);
  }

  const machine::Machine& machine_;
  Account& account_;
  support::TextStream& out_;
  std::set<std::string> buses_;  // that are stated
};

}  // namespace

void WriteLmSensors(const machine::Machine& machine, Account& account, support::TextStream& out) {
  out += fmt::format("# {}: written by rux export.\n", support::SafeText(machine.name()));
  ConfWriter(machine, account, out).Write();
}

}  // namespace rux::exports
