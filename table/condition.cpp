#include "table/condition.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ruxcomp/language/sections.h"
#include "support/failure.h"
#include "support/pattern.h"
#include "table/cell.h"
#include "table/columns.h"
#include "table/machine_table.h"

namespace rux::table {
namespace {

constexpr char kOperatorSigns[] = "=!<>";

support::Failure NotACondition(const std::string& text) {
  return support::Failure(support::ExitStatus::kWrongUsage,
                          "{} is not a condition: expected COLUMN=PATTERN, COLUMN!=PATTERN, or "
                          "COLUMN and one of <, <=, >, >= and a number",
                          text);
}

// The name before the sign.
std::string NameIn(const std::string& text) {
  const std::size_t end = text.find_first_of(kOperatorSigns);
  if (end == std::string::npos || end == 0) throw NotACondition(text);
  return text.substr(0, end);
}

// The cells of one column in all rows.
std::vector<Cell> CellsOf(const Column& column, const MachineTable& table) {
  const Lists lists(table.machine);
  std::vector<Cell> cells;
  cells.reserve(table.rows.size());
  for (const Row& row : table.rows) cells.push_back(CellOf(row.subject, column, lists));
  return cells;
}

// Puts the rows in place of which the old places are given.
void Take(const std::vector<std::size_t>& places, MachineTable& table) {
  std::vector<Row> rows;
  rows.reserve(places.size());
  for (const std::size_t place : places) rows.push_back(std::move(table.rows[place]));
  table.rows = std::move(rows);
}

}  // namespace

Condition::Condition(const ruxcomp::language::SectionKind& kind, const std::string& text)
    : column_(ColumnFor(kind, NameIn(text))) {
  const std::size_t sign = text.find_first_of(kOperatorSigns);
  const bool has_equal = text.compare(sign + 1, 1, "=") == 0;
  const bool is_less = text[sign] == '<';
  const bool is_order = is_less || text[sign] == '>';
  if (text[sign] == '!' && !has_equal) throw NotACondition(text);
  if (is_order) {
    operator_ = is_less ? (has_equal ? Operator::kLessOrEqual : Operator::kLess)
                        : (has_equal ? Operator::kMoreOrEqual : Operator::kMore);
  } else {
    operator_ = text[sign] == '!' ? Operator::kUnequal : Operator::kEqual;
  }
  const bool is_long = has_equal && text[sign] != '=';
  operand_ = text.substr(sign + (is_long ? 2 : 1));
  number_ = NumberIn(operand_);
  if (is_order && !number_) throw NotACondition(text);
}

bool Condition::IsEqual(const Cell& cell) const {
  if (cell.empty()) return support::FitsPattern(operand_, "");
  return std::any_of(cell.texts.begin(), cell.texts.end(), [&](const std::string& text) {
    return support::FitsPattern(operand_, text) || (number_ && NumberIn(text) == number_);
  });
}

bool Condition::Fits(const Cell& cell) const {
  if (operator_ == Operator::kEqual) return IsEqual(cell);
  if (operator_ == Operator::kUnequal) return !IsEqual(cell);
  const std::optional<double> number =
      cell.texts.size() == 1 ? NumberIn(cell.texts.front()) : std::nullopt;
  if (!number) return false;
  switch (operator_) {
    case Operator::kLess:
      return *number < *number_;
    case Operator::kLessOrEqual:
      return *number <= *number_;
    case Operator::kMore:
      return *number > *number_;
    default:
      return *number >= *number_;
  }
}

std::vector<bool> FittingRows(const std::vector<Condition>& conditions, const MachineTable& table) {
  std::vector<bool> fits(table.rows.size(), true);
  for (const Condition& condition : conditions) {
    const std::vector<Cell> cells = CellsOf(condition.column(), table);
    for (std::size_t i = 0; i < cells.size(); ++i) {
      if (!condition.Fits(cells[i])) fits[i] = false;
    }
  }
  return fits;
}

void KeepFitting(const std::vector<Condition>& conditions, MachineTable& table) {
  const std::vector<bool> fits = FittingRows(conditions, table);
  std::vector<std::size_t> kept;
  for (std::size_t i = 0; i < fits.size(); ++i) {
    if (fits[i]) kept.push_back(i);
  }
  Take(kept, table);
}

void Sort(const std::vector<Column>& columns, bool is_reversed, MachineTable& table) {
  std::vector<std::vector<Cell>> keys;
  keys.reserve(columns.size());
  for (const Column& column : columns) keys.push_back(CellsOf(column, table));
  std::vector<std::size_t> places(table.rows.size());
  std::iota(places.begin(), places.end(), 0);
  std::stable_sort(places.begin(), places.end(), [&](std::size_t a, std::size_t b) {
    for (const std::vector<Cell>& cells : keys) {
      const int order = Compare(cells[a], cells[b]);
      if (order != 0) return is_reversed ? order > 0 : order < 0;
    }
    return false;
  });
  if (is_reversed && columns.empty()) std::reverse(places.begin(), places.end());
  Take(places, table);
}

}  // namespace rux::table
