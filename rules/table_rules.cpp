// Tables whose cells are not what their rows seem to say.
#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "rules/cell_range.h"
#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"

namespace rux::rules {
namespace {

using language::kTableCells;

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

std::string InheritedText(const std::vector<std::uint32_t>& cells) {
  return cells.size() == 1
             ? fmt::format("no row sets cell {}: it keeps the value of a table above",
                           cells.front())
             : fmt::format("no row sets cells {}: they keep the values of a table above",
                           RangesText(cells));
}

std::string UnsetText(const std::vector<std::uint32_t>& cells) {
  return cells.size() == 1 ? fmt::format("no row sets cell {}: it is 0", cells.front())
                           : fmt::format("no row sets cells {}: they are 0", RangesText(cells));
}

class TableRule : public Rule {
 public:
  explicit TableRule(const RuleContext& context) : report_(context.report) {}

  bool WantsItems(language::SectionId kind, std::uint32_t) const override {
    return WantsSections(kind);
  }
  bool WantsSections(language::SectionId kind) const override {
    return kind == language::SECTION_TABLE;
  }

  void BeginSection(const ScriptSection& section, language::SectionId) override {
    section_ = section;
    has_name_ = false;
    has_misread_rows_ = false;
    rows_.clear();
    ++table_;
  }

  void Check(const ScriptItem& item) override {
    has_name_ |= item.entry == language::ENTRY_NAME;
    has_misread_rows_ |= item.entry == 0;
    if (item.entry != language::ENTRY_TABLE_ROW) return;
    const std::optional<Row> row = ReadRow(item);
    if (!row || item.parts.empty()) {
      has_misread_rows_ = true;
      return;
    }
    const std::uint8_t value = ReadCell(item, item.first());
    for (std::uint32_t cell = row->low; cell <= row->high; ++cell) {
      cells_[cell] = {value, item.place(), table_};
    }
    rows_.push_back(*row);
  }

  void EndSection() override {
    // The library refuses a table without a name.
    if (!has_name_) return;
    if (!has_misread_rows_) CheckUnsetCells();
    for (const Row& row : rows_) CheckOverwritten(row);
  }

 private:
  struct Row {
    ItemRef item;
    std::uint32_t low;
    std::uint32_t high;
  };

  // What a cell holds, and the row that set it.
  struct Cell {
    std::uint8_t value = 0;
    std::optional<Place> set_at;
    std::size_t table = 0;  // the number of the table that set it
  };

  // The cells that a row sets; none when the library refuses its key.
  std::optional<Row> ReadRow(const ScriptItem& item) {
    const language::CellRange range = language::SplitCellRange(item.name());
    const language::Number low = language::ReadNumber(range.low);
    const language::Number high = language::ReadNumber(range.high);
    if (!low.is_number || !high.is_number || low.value >= kTableCells ||
        high.value >= kTableCells || low.value > high.value) {
      return std::nullopt;
    }
    if (low.has_rest || high.has_rest) ReportTrailingTextInKey(item, low.value, high.value);
    return Row{item, low.value, high.value};
  }

  void ReportTrailingTextInKey(const ScriptItem& item, std::uint32_t low, std::uint32_t high) {
    const std::string read =
        low == high ? fmt::format("cell {}", low) : fmt::format("cells {} to {}", low, high);
    Warning warning = report_.Add(RuleId::kTrailingText, item, [&] {
      return fmt::format("{} is read as {}: what follows a number is ignored", item.name(), read);
    });
    std::string meant = MeantCells(item.name());
    if (meant.empty()) return;
    warning.Suggest(std::move(meant));
    has_misread_rows_ = true;
  }

  std::uint8_t ReadCell(const ScriptItem& item, std::string_view text) {
    const language::Number number = language::ReadNumber(text);
    const auto value = static_cast<std::uint8_t>(number.value);
    // A text that raises an error is the library's to report.
    if (number.raises) return 0;
    if (!number.is_number) {
      report_.Add(
          RuleId::kCellNotANumber, item,
          [&] { return fmt::format("{} is not a number: the cells become 0", text); }, text);
    } else if (number.has_rest) {
      ReportTrailingText(item, text, fmt::format("{}", number.value), report_);
    } else if (number.value >= kTableCells || number.is_cut) {
      report_.Add(
          RuleId::kCellTooLarge, item,
          [&] { return fmt::format("{} does not fit into a cell: it becomes {}", text, value); },
          text);
    }
    return number.is_number ? value : 0;
  }

  void CheckUnsetCells() {
    std::vector<std::uint32_t> inherited;
    std::vector<std::uint32_t> unset;
    for (std::uint32_t i = 0; i < kTableCells; ++i) {
      if (cells_[i].table != table_) (cells_[i].value != 0 ? inherited : unset).push_back(i);
    }
    if (!unset.empty()) {
      report_.Add(RuleId::kUnsetCells, section_, [&] { return UnsetText(unset); });
    }
    if (inherited.empty()) return;
    report_.Add(RuleId::kInheritedCells, section_, [&] { return InheritedText(inherited); })
        .Note("set here", *cells_[inherited.front()].set_at);
  }

  void CheckOverwritten(const Row& row) {
    for (std::uint32_t cell = row.low; cell <= row.high; ++cell) {
      const Place& set_at = *cells_[cell].set_at;
      if (set_at.file == row.item.file && set_at.line == row.item.item->line) return;
    }
    report_.Add(RuleId::kOverwrittenRow, row.item, "rows below set all its cells again")
        .Note("set again here", *cells_[row.low].set_at);
  }

  RuleReport& report_;
  bool has_name_ = false;
  bool has_misread_rows_ = false;
  ScriptSection section_ = {nullptr, nullptr};
  std::vector<Row> rows_;
  // Tables are filled one after the other, in one place.
  std::array<Cell, kTableCells> cells_;
  std::size_t table_ = 0;
};

}  // namespace

std::unique_ptr<Rule> MakeTableRule(const RuleContext& context) {
  return std::make_unique<TableRule>(context);
}

}  // namespace rux::rules
