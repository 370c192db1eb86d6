// sensors.conf of lm-sensors: what chips measure, under which names, and the limits set for them.
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
#include "imports/formats/conf_lines.h"
#include "imports/formats/formula.h"
#include "imports/formats/ratio.h"
#include "imports/formats/readers.h"
#include "losses/ledger.h"
#include "ruxcomp/language/entries.h"
#include "support/pattern.h"

namespace rux::imports {
namespace {

using losses::ItemId;
using losses::Reason;

struct Compute {
  Formula reading;
  bool is_undone;  // by the formula for what is written to the chip
  ItemId item;
};

struct Setting {
  std::string attribute;
  Formula formula;
  ItemId item;
};

// What the statements about a chip say of one of its features.
struct Feature {
  ConfName name;
  Origin origin;
  Text label;
  std::optional<Compute> compute;
  std::vector<Setting> settings;
  bool is_ignored = false;
  std::vector<ItemId> items;  // of all but what ignores it
};

// The chips that a statement selects, and what holds for them.
struct Chip {
  std::string patterns;
  std::size_t device;
  std::vector<Feature> features;  // as they are met
  std::map<std::string, std::size_t, std::less<>> places;

  Feature& For(const ConfName& name, const Origin& origin) {
    const auto [place, is_new] = places.emplace(name.feature, features.size());
    if (is_new) features.push_back({name, origin, {}, {}, {}, false, {}});
    return features[place->second];
  }
};

// "it8686-isa-0a40" of a pattern that says where the chip is; "nct6792" of "nct6792-*".
std::string ChipName(std::string pattern) {
  constexpr std::string_view kAny = "-*";
  while (pattern.size() > kAny.size() &&
         pattern.compare(pattern.size() - kAny.size(), kAny.size(), kAny) == 0)
    pattern.resize(pattern.size() - kAny.size());
  return pattern;
}

class ConfBoard {
 public:
  ConfBoard(Board& board, losses::Ledger& ledger) : board_(board), ledger_(ledger) {}

  void Read(const Source& source) {
    ledger_.BeginFile(source.path);
    path_ = source.path;
    file_ = static_cast<std::uint32_t>(ledger_.files().size() - 1);
    chip_.reset();
    for (const ConfLine& line : ReadConfLines(source.path, source.text)) ReadStatement(line);
  }

  void Finish() {
    for (const BusName& bus : buses_) AddBus(bus);
    for (const Chip& chip : chips_) {
      for (const Feature& feature : chip.features) AddFeature(chip, feature);
    }
  }

 private:
  struct BusName {
    std::string bus;
    Text adapter;
  };

  void ReadStatement(const ConfLine& line) {
    struct Statement {
      std::string_view keyword;
      void (ConfBoard::*read)(const ConfLine& line);
    };
    constexpr Statement kStatements[] = {
        {"bus", &ConfBoard::ReadBus},     {"chip", &ConfBoard::ReadChip},
        {"label", &ConfBoard::ReadLabel}, {"compute", &ConfBoard::ReadCompute},
        {"set", &ConfBoard::ReadSet},     {"ignore", &ConfBoard::ReadIgnore}};
    for (const Statement& statement : kStatements) {
      if (statement.keyword == line.keyword) return (this->*statement.read)(line);
    }
    RefuseConf(path_, line.number,
               "no such statement: " + std::string(line.keyword) +
                   "; expected bus, chip, label, compute, set or ignore");
  }

  const std::string& NameAt(const ConfLine& line, std::size_t token) const {
    if (!line.Has(token, ConfToken::Kind::kName)) line.RefuseAt(path_, token, "a name");
    return line.tokens[token].name;
  }

  // A name that has to look like that, for the shell.
  const std::string& PatternAt(const ConfLine& line, std::size_t token, const char* form,
                               const char* what) const {
    const std::string& name = NameAt(line, token);
    if (!support::FitsPattern(form, name)) line.RefuseAt(path_, token, what);
    return name;
  }
  const std::string& ChipAt(const ConfLine& line, std::size_t token) const {
    return PatternAt(line, token, "?*-?*", "chips, such as lm75-* or lm75-i2c-0-48");
  }

  void ExpectEnd(const ConfLine& line, std::size_t token) const {
    if (token < line.tokens.size()) line.RefuseAt(path_, token, "the end of the line");
  }

  Origin OriginOf(const ConfLine& line) const { return {file_, line.number, ""}; }

  ItemId Note(const ConfLine& line, const std::string& name, std::string_view value) {
    return ledger_.Note({line.number, std::string(line.keyword) + name, std::string(value)});
  }

  void ReadBus(const ConfLine& line) {
    const std::string& bus = PatternAt(line, 0, "i2c-[0-9]*", "a bus, such as i2c-0");
    const std::string& adapter = NameAt(line, 1);
    ExpectEnd(line, 2);
    buses_.push_back({bus, {adapter, Note(line, ' ' + bus, adapter)}});
  }

  void ReadChip(const ConfLine& line) {
    std::string patterns = ChipAt(line, 0);
    for (std::size_t i = 1; i < line.tokens.size(); ++i) patterns += ' ' + ChipAt(line, i);
    const ItemId item = Note(line, "", patterns);
    const auto [place, is_new] = chip_places_.emplace(patterns, chips_.size());
    chip_ = place->second;
    // The statements about the same chips belong together.
    if (!is_new) return ledger_.Used(item);
    chips_.push_back({patterns, board_.devices.size(), {}, {}});
    const std::string& first = line.tokens.front().name;
    board_.devices.push_back(
        {{ChipName(first), losses::kNoItem}, {{"CHIP", {patterns, item}}}, OriginOf(line)});
  }

  // What a statement is about; null if that is unknown here: then the item stays not understood.
  Feature* FeatureFor(const ConfLine& line, const ConfName& name) {
    if (!chip_)
      RefuseConf(path_, line.number, std::string(line.keyword) + " before the first chip");
    return !name.quantity ? nullptr : &chips_[*chip_].For(name, OriginOf(line));
  }

  Feature* WholeFeatureFor(const ConfLine& line, const std::string& name) {
    const ConfName parts = ConfNameOf(name);
    return parts.attribute.empty() ? FeatureFor(line, parts) : nullptr;
  }

  void ReadLabel(const ConfLine& line) {
    const std::string& name = NameAt(line, 0);
    const std::string& label = NameAt(line, 1);
    ExpectEnd(line, 2);
    const ItemId item = Note(line, ' ' + name, label);
    Feature* const feature = WholeFeatureFor(line, name);
    if (feature == nullptr) return;
    if (!feature->label.text.empty()) return ledger_.Dropped(item, Reason::kDuplicate);
    feature->label = {label, item};
    feature->items.push_back(item);
  }

  void ReadCompute(const ConfLine& line) {
    const std::string& name = NameAt(line, 0);
    std::size_t at = 1;
    const Formula reading = ReadFormula(path_, line, at);
    if (!line.HasSign(at, ',')) line.RefuseAt(path_, at, "a comma");
    ++at;
    const Formula writing = ReadFormula(path_, line, at);
    ExpectEnd(line, at);
    const ItemId item = Note(line, ' ' + name, line.TextOf(1, at));
    Feature* const feature = WholeFeatureFor(line, name);
    if (feature == nullptr) return;
    if (feature->compute) return ledger_.Dropped(item, Reason::kDuplicate);
    feature->compute = Compute{reading, AreOpposite(reading, writing), item};
    feature->items.push_back(item);
  }

  void ReadSet(const ConfLine& line) {
    const std::string& name = NameAt(line, 0);
    std::size_t at = 1;
    const Formula formula = ReadFormula(path_, line, at);
    ExpectEnd(line, at);
    const ItemId item = Note(line, ' ' + name, line.TextOf(1, at));
    const ConfName sub = ConfNameOf(name);
    Feature* const feature = FeatureFor(line, sub);
    if (feature == nullptr) return ledger_.Dropped(item, Reason::kNoPlace);
    feature->settings.push_back({sub.attribute, formula, item});
    feature->items.push_back(item);
  }

  void ReadIgnore(const ConfLine& line) {
    const std::string& name = NameAt(line, 0);
    ExpectEnd(line, 1);
    const ItemId item = Note(line, ' ' + name, "");
    Feature* const feature = WholeFeatureFor(line, name);
    if (feature == nullptr) return;
    feature->is_ignored = true;
    ledger_.Used(item);  // the scripts leave the sensor out
  }

  void AddBus(const BusName& bus) {
    bool is_used = false;
    for (const Chip& chip : chips_) {
      if ((chip.patterns + '-').find('-' + bus.bus + '-') == std::string::npos) continue;
      board_.devices[chip.device].properties.push_back({"ADAPTER", bus.adapter});
      is_used = true;
    }
    if (!is_used) ledger_.Dropped(bus.adapter.item, Reason::kNoOwner);
  }

  void AddFeature(const Chip& chip, const Feature& feature) {
    if (feature.is_ignored || feature.items.empty()) {
      for (const ItemId item : feature.items) ledger_.Dropped(item, Reason::kDisabled);
      return;
    }
    const Device& device = board_.devices[chip.device];
    Sensor sensor;
    sensor.name = feature.label;
    if (sensor.name.text.empty()) sensor.name.text = feature.name.feature;
    sensor.area = board_.AreaFor({device.name.text, losses::kNoItem}, {}, device.origin);
    sensor.device = chip.device;
    sensor.quantity = *feature.name.quantity;
    sensor.origin = feature.origin;
    sensor.properties.push_back({"FEATURE", {feature.name.feature, losses::kNoItem}});
    if (feature.compute) AddCompute(*feature.compute, sensor);
    // Of several settings of the same, the chip keeps the last.
    for (auto setting = feature.settings.rbegin(); setting != feature.settings.rend(); ++setting)
      AddSetting(*setting, sensor);
    board_.sensors.push_back(std::move(sensor));
  }

  // What the chip reads, times a factor and plus an offset, is the amount.
  void AddCompute(const Compute& compute, Sensor& sensor) {
    const auto& [factor, offset, hindrance] = compute.reading;
    if (hindrance) return ledger_.Dropped(compute.item, *hindrance);
    std::string after;
    const auto add = [&](const char* key, const Ratio& ratio) {
      sensor.properties.push_back({key, {ratio.Text(), losses::kNoItem}});
      after += (after.empty() ? "" : ", ") + (key + (' ' + ratio.Text()));
    };
    if (!(factor == Ratio{1, 1}) || offset == Ratio{}) add("FACTOR", factor);
    if (!(offset == Ratio{})) add("OFFSET", offset);
    ledger_.Changed(compute.item, after,
                    compute.is_undone ? Reason::kRewritten : Reason::kSimplified);
  }

  void AddSetting(const Setting& setting, Sensor& sensor) {
    const std::optional<language::EntryId> entry = LimitFor(setting.attribute);
    if (!entry) {
      return ledger_.Dropped(
          setting.item, IsOtherLimit(setting.attribute) ? Reason::kNoSuchLimit : Reason::kNoPlace);
    }
    const Formula& formula = setting.formula;
    if (!formula.IsNumber())
      return ledger_.Dropped(setting.item, formula.hindrance.value_or(Reason::kKnownAtRunTime));
    const std::optional<Decimal> amount =
        Decimal::Quotient(formula.offset.top, formula.offset.bottom);
    if (!amount) return ledger_.Dropped(setting.item, Reason::kDoesNotFit);
    AddLimit(sensor, {*entry, *amount, setting.item}, ledger_);
  }

  Board& board_;
  losses::Ledger& ledger_;
  std::string path_;
  std::uint32_t file_ = 0;
  std::vector<BusName> buses_;
  std::vector<Chip> chips_;
  std::map<std::string, std::size_t, std::less<>> chip_places_;
  std::optional<std::size_t> chip_;  // that statements are about: its place in chips_
};

}  // namespace

Board ReadLmSensors(const Sources& sources, const ReadOptions&, losses::Ledger& ledger) {
  Board board;
  board.name.text = std::filesystem::path(sources.front().path).stem().string();
  ConfBoard reader(board, ledger);
  for (const Source& source : sources) reader.Read(source);
  reader.Finish();
  return board;
}

}  // namespace rux::imports
