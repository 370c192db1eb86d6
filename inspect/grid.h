// Rows of cells in columns.
#ifndef INSPECT_GRID_H_
#define INSPECT_GRID_H_

#include <cstddef>
#include <string>
#include <vector>

#include "support/terminal.h"

namespace rux::inspect {

// Pieces of text between which a line may be broken; none where a row leaves a column empty.
using Cell = std::vector<std::string>;
using Row = std::vector<Cell>;

class Grid {
 public:
  // The first columns, `labels` of them, say what a row is about; the last of several is a name,
  // and bold in colours. Columns that are empty in all rows are left out. The rows must outlive
  // this.
  Grid(const std::vector<Row>& rows, std::size_t labels, support::OutputStyle style);

  // A line for each row. Columns that do not fit the width continue below, after the labels, at the
  // same place in all rows.
  std::string Text() const;

  // Several rows in a line where they fit; those go down the columns.
  std::string TextInColumns() const;

 private:
  std::string RowText(const Row& row, support::OutputStyle style) const;
  std::string CellText(const Row& row, std::size_t i, std::size_t column,
                       support::OutputStyle style) const;

  const std::vector<Row>& rows_;
  const std::vector<std::size_t> widths_;  // of the columns
  const std::size_t labels_;
  const support::OutputStyle style_;
  std::size_t indent_ = 0;  // of what continues below
};

}  // namespace rux::inspect

#endif  // INSPECT_GRID_H_
