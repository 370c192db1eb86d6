// What ipmi-sensors-config of FreeIPMI writes when it checks out: sensors of a running machine with
// their thresholds.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "imports/board.h"
#include "imports/formats.h"
#include "imports/formats/readers.h"
#include "lists/list.h"
#include "losses/ledger.h"
#include "ruxcomp/language/entries.h"
#include "support/ascii.h"
#include "support/failure.h"

namespace rux::imports {
namespace {

using losses::ItemId;
using losses::Reason;

// The limits are those of the interface for platform management: critical ones and those before.
struct ThresholdKey {
  std::string_view key;
  language::EntryId entry;
};
constexpr ThresholdKey kThresholdKeys[] = {
    {"Lower_Critical_Threshold", language::ENTRY_THRESHOLD_FL},
    {"Lower_Non_Critical_Threshold", language::ENTRY_THRESHOLD_WL},
    {"Upper_Non_Critical_Threshold", language::ENTRY_THRESHOLD_WH},
    {"Upper_Critical_Threshold", language::ENTRY_THRESHOLD_FH}};

bool HasEnding(std::string_view text, std::string_view ending) {
  return text.size() >= ending.size() && text.substr(text.size() - ending.size()) == ending;
}

// Takes the first word off the text.
std::string_view TakeWord(std::string_view& text) {
  text = lists::Trimmed(text);
  const std::size_t end = std::min(text.find_first_of(" \t"), text.size());
  const std::string_view word = text.substr(0, end);
  text = lists::Trimmed(text.substr(end));
  return word;
}

// The text up to the next semicolon; empty when the comment does not have the words.
std::string_view TextAfter(std::string_view words, std::string_view comment) {
  const std::size_t at = comment.find(words);
  if (at == std::string_view::npos) return {};
  const std::string_view text = comment.substr(at + words.size());
  return lists::Trimmed(text.substr(0, text.find(';')));
}

// "Temperature": the types of sensors that measure are called as quantities are.
Quantity QuantityOfType(std::string type) {
  for (char& c : type) c = support::ToLower(c);
  return FindQuantity(type).value_or(Quantity::kOther);
}

class CheckoutReader {
 public:
  CheckoutReader(const Source& source, Board& board, losses::Ledger& ledger)
      : path_(source.path), board_(board), ledger_(ledger) {
    ledger.BeginFile(source.path);
    file_ = static_cast<std::uint32_t>(ledger.files().size() - 1);
  }

  void ReadLine(std::string_view line) {
    ++line_;
    line = lists::Trimmed(line);
    if (line.empty()) return;
    if (line.front() == '#')
      return ReadComment(line.substr(std::min(line.find_first_not_of('#'), line.size())));
    std::string_view rest = line;
    const std::string_view key = TakeWord(rest);
    if (key == "Section") return Begin(rest);
    if (!is_in_section_) Refuse("expected Section and its name");
    if (key == "EndSection") return End();
    ReadKey(key, rest);
  }

  void Finish() const {
    if (is_in_section_) Refuse("the last Section has no EndSection");
  }

 private:
  [[noreturn]] void Refuse(std::string_view what) const {
    throw support::Failure(support::ExitStatus::kTrouble, "{}:{}: {}", path_, line_, what);
  }

  // "12_CPU_Temp": the record of the sensor, and its name with underscores for blanks.
  void Begin(std::string_view name) {
    if (is_in_section_) Refuse("the Section before has no EndSection");
    const std::size_t bar = name.find('_');
    const bool has_record = bar != std::string_view::npos && bar > 0 && bar + 1 < name.size() &&
                            name.find_first_not_of("0123456789") == bar;
    if (!has_record) Refuse("a Section is called by a number, an underscore and a name");
    is_in_section_ = true;
    const std::string record(name.substr(0, bar));
    const std::string sensor(name.substr(bar + 1));
    sensor_ = Sensor();
    sensor_.name = {sensor, ledger_.Note({line_, "Section " + record, sensor})};
    sensor_.origin = {file_, line_, ""};
    sensor_.properties.push_back({"RECORD", {record, losses::kNoItem}});
    sensor_.area = board_.AreaFor({board_.name.text, losses::kNoItem}, {}, sensor_.origin);
  }

  void End() {
    is_in_section_ = false;
    sensor_.quantity = QuantityIn(sensor_.unit.text);
    if (sensor_.quantity == Quantity::kOther) sensor_.quantity = QuantityOfType(type_);
    type_.clear();
    board_.sensors.push_back(std::move(sensor_));
  }

  // Keys that cannot be set are there as comments. Other comments explain the next key, with the
  // type of the sensor and the unit of thresholds.
  void ReadComment(std::string_view comment) {
    if (!is_in_section_) return;
    std::string_view rest = comment;
    const std::string_view key = TakeWord(rest);
    const bool is_pair = !rest.empty() && rest.find_first_of(" \t") == std::string_view::npos;
    if (is_pair && key.find('_') != std::string_view::npos) return ReadKey(key, rest);
    if (type_.empty()) type_ = TextAfter("sensor type = ", comment);
    if (sensor_.unit.text.empty()) sensor_.unit.text = TextAfter("; units = ", comment);
  }

  void ReadKey(std::string_view key, std::string_view value) {
    const ItemId item = ledger_.Note({line_, std::string(key), std::string(value)});
    for (const ThresholdKey& row : kThresholdKeys) {
      if (row.key != key) continue;
      AddLimit(sensor_, {row.entry, {}, item}, value, ledger_);
      return;
    }
    const bool is_limit = HasEnding(key, "_Threshold") || HasEnding(key, "_Hysteresis");
    ledger_.Dropped(item, is_limit ? Reason::kNoSuchLimit : Reason::kNoPlace);
  }

  const std::string& path_;
  Board& board_;
  losses::Ledger& ledger_;
  std::uint32_t file_;
  std::uint32_t line_ = 0;
  bool is_in_section_ = false;
  Sensor sensor_;     // of the Section
  std::string type_;  // of the sensor, as comments have it
};

}  // namespace

Board ReadFreeIpmi(const Sources& sources, const ReadOptions&, losses::Ledger& ledger) {
  Board board;
  board.name.text = std::filesystem::path(sources.front().path).stem().string();
  for (const Source& source : sources) {
    CheckoutReader reader(source, board, ledger);
    std::string_view text = source.text;
    while (!text.empty()) {
      const std::size_t end = std::min(text.find('\n'), text.size());
      reader.ReadLine(text.substr(0, end));
      text.remove_prefix(std::min(end + 1, text.size()));
    }
    reader.Finish();
  }
  return board;
}

}  // namespace rux::imports
