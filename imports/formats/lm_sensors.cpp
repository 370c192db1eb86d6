// sensors.conf of lm-sensors: what chips measure, under which names, and the limits set for them.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "imports/board.h"
#include "imports/formats.h"
#include "imports/formats/conf_chips.h"
#include "imports/formats/conf_features.h"
#include "imports/formats/conf_lines.h"
#include "imports/formats/formula.h"
#include "imports/formats/readers.h"
#include "losses/ledger.h"
#include "support/pattern.h"

namespace rux::imports {
namespace {

using losses::ItemId;
using losses::Reason;

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
    const std::map<std::string, std::vector<std::size_t>> devices = DevicesByBus();
    for (const BusName& bus : buses_) {
      const auto found = devices.find(bus.bus);
      if (found == devices.end())
        ledger_.Dropped(bus.adapter.item, Reason::kNoOwner);
      else
        AddAdapter(bus.adapter, found->second);
    }
    for (const ConfChip& chip : chips_) AddSensors(chip, board_, ledger_);
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
    ++block_;
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
  ConfFeature* FeatureFor(const ConfLine& line, const ConfName& name) {
    if (!chip_)
      RefuseConf(path_, line.number, std::string(line.keyword) + " before the first chip");
    return !name.quantity ? nullptr : &chips_[*chip_].For(name, OriginOf(line));
  }

  ConfFeature* WholeFeatureFor(const ConfLine& line, const std::string& name) {
    const ConfName parts = ConfNameOf(name);
    return parts.attribute.empty() ? FeatureFor(line, parts) : nullptr;
  }

  void ReadLabel(const ConfLine& line) {
    const std::string& name = NameAt(line, 0);
    const std::string& label = NameAt(line, 1);
    ExpectEnd(line, 2);
    const ItemId item = Note(line, ' ' + name, label);
    ConfFeature* const feature = WholeFeatureFor(line, name);
    if (feature == nullptr) return;
    ConfLabel& before = feature->label;
    if (before.block == block_) return ledger_.Dropped(item, Reason::kDuplicate);
    ledger_.Dropped(before.text.item, Reason::kDuplicate);
    before = {{label, item}, block_};
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
    ConfFeature* const feature = WholeFeatureFor(line, name);
    if (feature == nullptr) return;
    std::optional<ConfCompute>& before = feature->compute;
    if (before && before->block == block_) return ledger_.Dropped(item, Reason::kDuplicate);
    if (before) ledger_.Dropped(before->item, Reason::kDuplicate);
    before = ConfCompute{reading, AreOpposite(reading, writing), item, block_};
    feature->items.push_back(item);
  }

  void ReadSet(const ConfLine& line) {
    const std::string& name = NameAt(line, 0);
    std::size_t at = 1;
    const Formula formula = ReadFormula(path_, line, at);
    ExpectEnd(line, at);
    const ItemId item = Note(line, ' ' + name, line.TextOf(1, at));
    const ConfName sub = ConfNameOf(name);
    ConfFeature* const feature = FeatureFor(line, sub);
    if (feature == nullptr) return ledger_.Dropped(item, Reason::kNoPlace);
    feature->settings.push_back({sub.attribute, formula, item, block_});
    feature->items.push_back(item);
  }

  void ReadIgnore(const ConfLine& line) {
    const std::string& name = NameAt(line, 0);
    ExpectEnd(line, 1);
    const ItemId item = Note(line, ' ' + name, "");
    ConfFeature* const feature = WholeFeatureFor(line, name);
    if (feature == nullptr) return;
    feature->is_ignored = true;
    ledger_.Used(item);  // the scripts leave the sensor out
  }

  // "i2c-0" of "lm75-i2c-0-48".
  std::map<std::string, std::vector<std::size_t>> DevicesByBus() const {
    std::map<std::string, std::vector<std::size_t>> devices;
    constexpr std::string_view kBus = "-i2c-";
    for (const ConfChip& chip : chips_) {
      std::set<std::string> buses;
      for (std::size_t at = chip.patterns.find(kBus); at != std::string::npos;
           at = chip.patterns.find(kBus, at + 1)) {
        const std::size_t end = chip.patterns.find_first_of(" -", at + kBus.size());
        buses.insert(chip.patterns.substr(at + 1, end - at - 1));
      }
      for (const std::string& bus : buses) devices[bus].push_back(chip.device);
    }
    return devices;
  }

  void AddAdapter(const Text& adapter, const std::vector<std::size_t>& devices) {
    for (const std::size_t device : devices)
      board_.devices[device].properties.push_back({"ADAPTER", adapter});
  }

  Board& board_;
  losses::Ledger& ledger_;
  std::string path_;
  std::uint32_t file_ = 0;
  std::vector<BusName> buses_;
  std::vector<ConfChip> chips_;
  std::map<std::string, std::size_t, std::less<>> chip_places_;
  std::size_t block_ = 0;
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
