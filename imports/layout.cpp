#include "imports/layout.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "imports/board.h"
#include "imports/decimal.h"
#include "imports/names.h"
#include "imports/script_text.h"
#include "imports/sections.h"
#include "imports/source_names.h"
#include "losses/ledger.h"
#include "support/ascii.h"
#include "support/json.h"

namespace rux::imports {
namespace {

constexpr char kWordsFile[] = "words.rux";
constexpr char kGroupsFile[] = "groups.rux";
constexpr char kDevicesFile[] = "devices.rux";

std::string InLowerCase(std::string text) {
  for (char& c : text) c = support::ToLower(c);
  return text;
}

class Layout {
 public:
  Layout(const Board& board, const LayoutOptions& options, losses::Ledger& ledger)
      : board_(board),
        options_(options),
        ledger_(ledger),
        sources_(ShortestNames(ledger.files())) {}

  std::vector<ScriptFile> Write() {
    TakeNames();
    AddWords();
    if (!board_.areas.empty()) AddGroups();
    if (!board_.devices.empty()) AddDevices();
    for (std::size_t area = 0; area < board_.areas.size(); ++area) {
      if (!sensors_of_[area].empty()) AddSensors(area);
    }
    files_.insert(files_.begin(), {kMainScript, MainText()});
    files_.push_back({".rux.json", ProjectText()});
    return std::move(files_);
  }

 private:
  void TakeNames() {
    Names areas;
    for (const Area& area : board_.areas) areas_.push_back(areas.Take(area.name.text, "GROUP"));
    Names devices;
    for (const Device& device : board_.devices)
      devices_.push_back(devices.Take(device.name.text, "DEVICE"));
    Names sensors;
    sensors_of_.resize(board_.areas.size());
    for (std::size_t i = 0; i < board_.sensors.size(); ++i) {
      const Sensor& sensor = board_.sensors[i];
      names_.push_back(sensors.Take(sensor.name.text, "SENSOR"));
      sensors_of_[sensor.area].push_back(i);
    }
    TakeIds();
  }

  // IDs that are asked for come first: no other sensor gets one of them.
  void TakeIds() {
    Ids ids;
    std::vector<std::optional<std::uint32_t>> taken(board_.sensors.size());
    for (std::size_t i = 0; i < taken.size(); ++i) {
      taken[i] = IdIn(board_.sensors[i]);
      if (taken[i] && !ids.Take(*taken[i])) taken[i].reset();
    }
    for (std::size_t i = 0; i < taken.size(); ++i) {
      const auto wanted = options_.ids.find(names_[i]);
      const bool is_kept = !taken[i] && wanted != options_.ids.end() && ids.Take(wanted->second);
      if (is_kept) taken[i] = wanted->second;
    }
    for (const std::uint32_t id : options_.taken) ids.Take(id);
    for (std::size_t i = 0; i < taken.size(); ++i) {
      ids_.push_back(taken[i] ? *taken[i] : ids.TakeNext());
      SettleId(board_.sensors[i], ids_.back());
    }
  }

  static std::optional<std::uint32_t> IdIn(const Sensor& sensor) {
    for (const Number& number : sensor.numbers) {
      if (number.entry != language::ENTRY_ID) continue;
      const std::optional<Decimal> read = Decimal::In(number.value.text);
      const std::optional<std::int64_t> id = read ? read->WholeAt(0) : std::nullopt;
      if (id && *id >= 0 && *id < UINT32_MAX) return static_cast<std::uint32_t>(*id);
    }
    return std::nullopt;
  }

  void SettleId(const Sensor& sensor, std::uint32_t id) {
    for (const Number& number : sensor.numbers) {
      if (number.entry != language::ENTRY_ID) continue;
      const std::optional<std::uint32_t> wanted = IdIn(sensor);
      const losses::ItemId item = number.value.item;
      if (!wanted)
        ledger_.Dropped(item, losses::Reason::kDoesNotFit);
      else if (*wanted != id)
        ledger_.Dropped(item, losses::Reason::kDuplicate);
      else if (number.value.text == HexText(id))
        ledger_.Used(item);
      else
        ledger_.Changed(item, HexText(id), losses::Reason::kRewritten);
    }
  }

  void AddFile(std::string name, ScriptText& script) {
    files_.push_back({std::move(name), script.Text()});
  }

  void AddWords() {
    ScriptText script;
    script.Comment("Words for numbers.");
    script.Gap();
    script.Comment("VALUE: how a reading is taken. Write that in place of VT_NONE.");
    script.Section("DEFINE");
    script.Entry("VT_NONE", "0");
    script.Gap();
    script.Comment("TYPE of a sensor: the sensor type codes of the platform management interface.");
    script.Section("DEFINE");
    std::set<std::string_view> written;
    for (const QuantityRow& row : kQuantities) {
      if (written.insert(row.word).second) script.Entry(row.word, HexText(row.code));
    }
    AddFile(kWordsFile, script);
  }

  void AddGroups() {
    std::vector<std::size_t> children(board_.areas.size());
    for (const Area& area : board_.areas) {
      if (area.parent) ++children[*area.parent];
    }
    ScriptText script;
    SectionWriter writer(script, ledger_, sources_);
    script.Comment("The tree of groups: a group comes after the one that it is in.");
    script.Gap();
    for (std::size_t i = 0; i < board_.areas.size(); ++i) {
      const Area& area = board_.areas[i];
      writer.Comment(area.origin, area.name.text);
      script.Section("GROUP");
      script.Entry("PARENT", area.parent ? areas_[*area.parent] : "0");
      script.Entry("NAME", areas_[i]);
      script.Entry("CHILDGROUP", std::to_string(children[i]));
      writer.SettleName(area.name, areas_[i]);
    }
    AddFile(kGroupsFile, script);
  }

  void AddDevices() {
    ScriptText script;
    SectionWriter writer(script, ledger_, sources_);
    script.Comment("The chips and other devices that sensors are read from.");
    script.Gap();
    for (std::size_t i = 0; i < board_.devices.size(); ++i)
      writer.Write(board_.devices[i], devices_[i], static_cast<std::uint32_t>(i + 1));
    AddFile(kDevicesFile, script);
  }

  void AddSensors(std::size_t area) {
    ScriptText script;
    SectionWriter writer(script, ledger_, sources_);
    script.Comment("The sensors of " + areas_[area] + '.');
    script.Gap();
    writer.Comment(board_.areas[area].origin, board_.areas[area].name.text);
    script.Section("PELMGROUP");
    script.Entry("NAME", areas_[area]);
    script.Entry("ID", HexText(++lists_));
    script.Entry("PID", "0");
    std::vector<std::string> ids;
    for (const std::size_t sensor : sensors_of_[area]) ids.push_back(HexText(ids_[sensor]));
    script.List("SENSORS", ids);
    for (const std::size_t place : sensors_of_[area]) {
      const Sensor& sensor = board_.sensors[place];
      writer.Write(sensor, {names_[place], ids_[place], areas_[area],
                            sensor.device ? devices_[*sensor.device] : ""});
    }
    AddFile(file_names_.Take(InLowerCase(areas_[area]), "sensors") + ".rux", script);
  }

  std::string MainText() {
    ScriptText script;
    SectionWriter writer(script, ledger_, sources_);
    for (const std::string& line : options_.heading) script.Comment(PlainText(line));
    if (!options_.heading.empty()) script.Gap();
    script.Section("MORVRUX");
    script.Entry("VERSION", "1.0");
    script.Gap();
    writer.Comment(board_.origin, board_.name.text);
    script.Comment("TYPE, FLAG and RUXLOOP are for the firmware: write what it expects.");
    script.Section("SYSTEM");
    script.Entry("TYPE", "0");
    const std::string model = PlainText(board_.name.text);
    script.Entry("MODEL", model);
    writer.Settle(board_.name, model, losses::Reason::kSimplified);
    script.Entry("FLAG", "0");
    script.Entry("RUXLOOP", "0");
    script.Section("INCLUDE");
    for (const ScriptFile& file : files_) script.Entry("FILE", file.name);
    for (const Facts& facts : board_.facts) {
      script.Gap();
      writer.Comment(facts.origin, facts.name);
      script.Section("PROPERTY");
      writer.Write("", facts.properties);
    }
    return script.Text();
  }

  // What `rux table` and `rux diff` go by.
  static std::string ProjectText() {
    return support::JsonDocument([](support::JsonObject& json) {
      json.Array("limits", [](support::JsonArray& rules) {
        rules.Object([](support::JsonObject& rule) {
          rule.Member("unit_property", kUnitProperty);
          rule.Member("divisor_property", kDivisorProperty);
          rule.Member("sign_property", kSignProperty);
          rule.Member("sign", "signed");
        });
      });
    });
  }

  // cppcheck-suppress unusedPrivateFunction ; it is, by the initializer of a member
  static Names ReservedFileNames() {
    Names names;
    for (const char* name : {"main", "words", "groups", "devices"}) names.Take(name, "");
    return names;
  }

  const Board& board_;
  const LayoutOptions& options_;
  losses::Ledger& ledger_;
  const std::vector<std::string> sources_;  // as comments name them
  std::vector<std::string> areas_;          // the NAMEs
  std::vector<std::string> devices_;
  std::vector<std::string> names_;                    // of the sensors
  std::vector<std::uint32_t> ids_;                    // of the sensors
  std::vector<std::vector<std::size_t>> sensors_of_;  // by their areas
  std::uint32_t lists_ = 0;                           // PELMGROUPs
  Names file_names_ = ReservedFileNames();
  std::vector<ScriptFile> files_;
};

}  // namespace

std::vector<ScriptFile> LayOut(const Board& board, const LayoutOptions& options,
                               losses::Ledger& ledger) {
  return Layout(board, options, ledger).Write();
}

}  // namespace rux::imports
