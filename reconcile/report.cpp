#include "reconcile/report.h"

#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "machine/machine.h"
#include "reconcile/compare.h"
#include "reconcile/pairing.h"
#include "support/json.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "table/cell.h"
#include "table/columns.h"
#include "table/forms.h"

namespace rux::reconcile {
namespace {

using table::Cell;

// "server.rux, sensors.csv: 3 differences: 1 differs, 2 missing (48 rows compared)"
std::string SummaryLine(const Comparison& comparison, const std::string& list_path) {
  const std::size_t count = comparison.differences.size();
  std::string line = support::SafePath(comparison.table.machine.name()) + ", " +
                     support::SafePath(list_path) + ": " +
                     (count == 0 ? "no differences" : support::CountText(count, "difference"));
  const char* separator = ": ";
  for (std::size_t i = 0; i < kDifferenceCount; ++i) {
    const std::size_t of_kind = comparison.CountOf(static_cast<DifferenceKind>(i));
    if (of_kind == 0) continue;
    line += fmt::format("{}{} {}", separator, of_kind, kDifferenceWords[i]);
    separator = ", ";
  }
  return line + fmt::format(" ({} compared)", comparison.compared);
}

// What the machine has, with the unit of a limit.
std::string OursOf(const Difference& difference) {
  if (difference.column == nullptr || difference.ours.empty()) return "";
  const table::Subject& subject = difference.row->subject;
  const machine::Quantity quantity = subject.machine.QuantityOf(subject.section);
  if (difference.column->column.is_limit() && difference.ours.number)
    return quantity.TextOf(*difference.ours.number);
  return table::TextOf(difference.ours);
}

Cell CellOrNone(const std::string& text) { return text.empty() ? Cell() : table::TextCell(text); }

}  // namespace

std::vector<std::string> NotesOf(const Comparison& comparison) {
  std::vector<std::string> lines;
  const auto add_names = [&](const char* what, const std::vector<std::string>& names) {
    if (names.empty()) return;
    lines.push_back(what + support::SafeText(fmt::to_string(fmt::join(names, ", "))));
  };
  add_names("columns of the list that are not compared: ", comparison.pairing.ignored);
  add_names("limits of the machine that the list has no columns for: ", comparison.unlisted);
  if (comparison.stored > 0) {
    lines.push_back(support::CountText(comparison.stored, "sensor") +
                    ": limits compared as stored numbers; the project file states no unit or sign");
  }
  return lines;
}

std::vector<std::string> DifferenceColumns() {
  return {"difference",
          std::string(table::kNameColumn),
          std::string(table::kIdColumn),
          "column",
          "machine",
          "list",
          table::kPlaceColumn,
          "listed"};
}

std::vector<Cell> CellsOf(const Difference& difference, const std::string& list_path) {
  Cell id;
  if (difference.id) {
    id = table::TextCell(fmt::format("0x{:X}", *difference.id));
    id.number = difference.id;
  }
  const std::string place = difference.place ? difference.place->Text() : "";
  const std::string listed =
      difference.listed == nullptr ? "" : fmt::format("{}:{}", list_path, difference.listed->line);
  return {table::TextCell(std::string(kDifferenceWords[static_cast<std::size_t>(difference.kind)])),
          CellOrNone(difference.name),
          id,
          CellOrNone(difference.column == nullptr ? "" : difference.column->column.name),
          CellOrNone(OursOf(difference)),
          CellOrNone(difference.theirs),
          CellOrNone(place),
          CellOrNone(listed)};
}

table::Sheet SheetOf(const Comparison& comparison, const std::string& list_path) {
  table::Sheet sheet;
  sheet.title = "A machine and a list";
  sheet.lines = NotesOf(comparison);
  sheet.lines.insert(sheet.lines.begin(), SummaryLine(comparison, list_path));
  sheet.columns = DifferenceColumns();
  sheet.rows.reserve(comparison.differences.size());
  for (const Difference& difference : comparison.differences)
    sheet.rows.push_back(table::RowOf(CellsOf(difference, list_path)));
  return sheet;
}

void WriteNotes(const Comparison& comparison, support::JsonObject& json) {
  json.Member("stored", comparison.stored);
  json.Array("ignored",
             [&](support::JsonArray& names) { names.Items(comparison.pairing.ignored); });
  json.Array("unlisted", [&](support::JsonArray& names) { names.Items(comparison.unlisted); });
}

void WriteComparison(const Comparison& comparison, const std::string& list_path,
                     const table::Sheet& sheet, support::JsonObject& json) {
  json.Schema(1);
  json.Member("file", comparison.table.machine.name());
  json.Member("list", list_path);
  json.Member("kind", comparison.table.kind.keyword);
  json.Member("compared", comparison.compared);
  json.Object("counts", [&](support::JsonObject& counts) {
    for (std::size_t i = 0; i < kDifferenceCount; ++i)
      counts.Member(kDifferenceWords[i], comparison.CountOf(static_cast<DifferenceKind>(i)));
  });
  WriteNotes(comparison, json);
  table::WriteRows(sheet, json);
}

}  // namespace rux::reconcile
