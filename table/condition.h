// Which rows a table keeps: COLUMN=PATTERN, COLUMN!=PATTERN, or a comparison of numbers such as
// THRESHOLD_FH>=90.
#ifndef TABLE_CONDITION_H_
#define TABLE_CONDITION_H_

#include <optional>
#include <string>
#include <vector>

#include "ruxcomp/language/sections.h"
#include "table/cell.h"
#include "table/columns.h"
#include "table/machine_table.h"

namespace rux::table {

class Condition {
 public:
  // Throws a Failure of wrong usage that says what is wrong with the text.
  Condition(const ruxcomp::language::SectionKind& kind, const std::string& text);

  const Column& column() const { return column_; }
  // A pattern fits any text of a list, and an empty one an empty cell. Numbers are the same however
  // they are written. A cell without a number is neither more nor less than anything.
  bool Fits(const Cell& cell) const;

 private:
  enum class Operator { kEqual, kUnequal, kLess, kLessOrEqual, kMore, kMoreOrEqual };

  bool IsEqual(const Cell& cell) const;

  Column column_;
  Operator operator_;
  std::string operand_;
  std::optional<double> number_;  // that the operand is
};

// Which rows fit all conditions.
std::vector<bool> FittingRows(const std::vector<Condition>& conditions, const MachineTable& table);

// Leaves these.
void KeepFitting(const std::vector<Condition>& conditions, MachineTable& table);

// By the columns, the first one first; rows that are the same there stay in their order.
void Sort(const std::vector<Column>& columns, bool is_reversed, MachineTable& table);

}  // namespace rux::table

#endif  // TABLE_CONDITION_H_
