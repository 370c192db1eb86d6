// Tables whose cells are not what their rows seem to say.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>

#include "rules/number_text.h"
#include "rules/trap_rules.h"
#include "ruxcomp/records.h"

namespace rux::rules {
namespace {

constexpr std::uint32_t kCells = 256;

struct Row {
  SeenItem item;
  std::uint32_t low;
  std::uint32_t high;
};

// What a cell holds, and the row that set it.
struct Cell {
  std::uint8_t value = 0;
  std::optional<sources::SourcePlace> set_at;
  std::size_t table = 0;  // the number of the table that set it
};

// "51 to 70, 99 and more"
std::string RangesText(const std::vector<std::uint32_t>& cells) {
  constexpr int kMost = 3;
  std::string text;
  int ranges = 0;
  for (std::size_t i = 0; i < cells.size();) {
    std::size_t end = i + 1;
    while (end < cells.size() && cells[end] == cells[end - 1] + 1) ++end;
    if (++ranges > kMost) return text + " and more";
    if (!text.empty()) text += ", ";
    text += end - i == 1 ? fmt::format("{}", cells[i])
                         : fmt::format("{} to {}", cells[i], cells[end - 1]);
    i = end;
  }
  return text;
}

class TableTraps : public TrapRules {
 public:
  explicit TableTraps(TrapReport& report) : report_(report) {}

  bool BeginSection(const sources::SourceSection& section, std::uint32_t kind) override {
    if (kind != compiled::kKindTABLE) return false;
    section_ = section;
    has_name_ = false;
    rows_.clear();
    ++table_;
    return true;
  }

  void See(const ScriptItem& item) override {
    has_name_ |= item.key == compiled::kKeyNAME;
    if (item.key != compiled::kKeyTABLE_ROW) return;
    const std::optional<Row> row = ReadRow(item);
    if (!row || item.parts.empty()) return;
    const std::uint8_t value = ReadCell(item, item.first());
    for (std::uint32_t cell = row->low; cell <= row->high; ++cell) {
      cells_[cell] = {value, PlaceOf(item), table_};
    }
    rows_.push_back(*row);
  }

  void EndSection() override {
    // The library refuses a table without a name.
    if (!has_name_) return;
    TellInheritedCells();
    for (const Row& row : rows_) TellIfOverwritten(row);
  }

 private:
  // The cells that a row sets; none when the library refuses its key.
  std::optional<Row> ReadRow(const ScriptItem& item) {
    const std::string_view key = item.name();
    const std::size_t dot = key.find('.');
    const NumberText low = ReadNumber(key.substr(0, dot));
    const NumberText high = dot == std::string_view::npos ? low : ReadNumber(key.substr(dot + 1));
    if (!low.is_number || !high.is_number || low.value >= kCells || high.value >= kCells ||
        low.value > high.value) {
      return std::nullopt;
    }
    if (low.has_rest || high.has_rest) TellKey(item, low.value, high.value);
    return Row{SeenItem(item), low.value, high.value};
  }

  void TellKey(const ScriptItem& item, std::uint32_t low, std::uint32_t high) {
    const std::string read =
        low == high ? fmt::format("cell {}", low) : fmt::format("cells {} to {}", low, high);
    diagnostics::Diagnostic& warning = report_.Add(
        kTrailingText, item,
        fmt::format("{} is read as {}: what follows a number is ignored", item.name(), read));
    // Most likely a range is meant.
    const std::size_t dash = item.name().find('-');
    if (dash == std::string_view::npos || dash == 0) return;
    warning.suggestion = std::string(item.name()).replace(dash, 1, ".");
  }

  std::uint8_t ReadCell(const ScriptItem& item, std::string_view text) {
    const NumberText number = ReadNumber(text);
    const auto value = static_cast<std::uint8_t>(number.value);
    if (!number.is_number) {
      if (!number.raises) {
        report_.Add(kCellNotANumber, item, fmt::format("{} is no number: the cells become 0", text),
                    text);
      }
      return 0;
    }
    if (number.has_rest) {
      report_.Add(
          kTrailingText, item,
          fmt::format("{} is read as {}: what follows the number is ignored", text, number.value),
          text);
    } else if (number.value >= kCells || number.is_cut) {
      report_.Add(kCellTooLarge, item,
                  fmt::format("{} does not fit into a cell: it becomes {}", text, value), text);
    }
    return value;
  }

  void TellInheritedCells() {
    std::vector<std::uint32_t> inherited;
    for (std::uint32_t i = 0; i < kCells; ++i) {
      if (cells_[i].table != table_ && cells_[i].value != 0) inherited.push_back(i);
    }
    if (inherited.empty()) return;
    diagnostics::Diagnostic& warning = report_.Add(
        kInheritedCells, section_,
        inherited.size() == 1
            ? fmt::format("no row sets the cell {}: it keeps the value of a table above",
                          inherited.front())
            : fmt::format("no row sets the cells {}: they keep the values of a table above",
                          RangesText(inherited)));
    AddPlace(warning, "set here", *cells_[inherited.front()].set_at);
  }

  void TellIfOverwritten(const Row& row) {
    for (std::uint32_t cell = row.low; cell <= row.high; ++cell) {
      const sources::SourcePlace& set_at = *cells_[cell].set_at;
      if (set_at.file == row.item.file && set_at.line == row.item.item->line) return;
    }
    diagnostics::Diagnostic& warning =
        report_.Add(kOverwrittenRow, row.item.Shown(), "rows below set all its cells again");
    AddPlace(warning, "set again here", *cells_[row.low].set_at);
  }

  TrapReport& report_;
  bool has_name_ = false;
  sources::SourceSection section_ = {nullptr, nullptr};
  std::vector<Row> rows_;
  // Tables are filled one after the other, in one place.
  std::array<Cell, kCells> cells_;
  std::size_t table_ = 0;
};

}  // namespace

std::unique_ptr<TrapRules> MakeTableTraps(const DefinedWordTable&, TrapReport& report) {
  return std::make_unique<TableTraps>(report);
}

}  // namespace rux::rules
