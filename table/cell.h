// What is where a row and a column of a table meet.
#ifndef TABLE_CELL_H_
#define TABLE_CELL_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rux::table {

struct Cell {
  std::vector<std::string> texts;       // as they are, not made safe; none: the cell is empty
  std::optional<std::uint32_t> number;  // the stored one that the only text is about
  bool is_list = false;                 // there may be other than one text

  bool empty() const { return texts.empty(); }
};

Cell TextCell(std::string text);
Cell ListCell(std::vector<std::string> texts);

// What the forms show: the texts, separated by commas.
std::string TextOf(const Cell& cell);

// The cells of a row that are not empty, in the order of the columns. They are as many as sections
// have entries; the cells of all rows and columns would be as many as the product.
struct PlacedCell {
  std::size_t column;
  Cell cell;
};
using RowCells = std::vector<PlacedCell>;

// Of a row that has the cells of all columns.
RowCells RowOf(std::vector<Cell> cells);

// The cell of that column.
const Cell& CellIn(const RowCells& cells, std::size_t column);

// use(cell) for each of that number of columns.
template <class Use>
void ForEachCell(const RowCells& cells, std::size_t columns, Use use) {
  static const Cell empty;
  auto next = cells.begin();
  for (std::size_t i = 0; i < columns; ++i)
    use(next != cells.end() && next->column == i ? (next++)->cell : empty);
}

// What a table is sorted by: -1, 0 or 1. Numbers by what they are, and before texts; what is empty
// comes last.
int Compare(const Cell& a, const Cell& b);

// A whole text as a number, such as "-5", "+1.05", "2e3" or "0x1F"; none when it is anything else.
std::optional<double> NumberIn(std::string_view text);

// The same with a text after the number, which a hexadecimal one does not have.
struct LeadingNumber {
  double number;
  std::string_view rest;  // of the given text
};
std::optional<LeadingNumber> LeadingNumberIn(std::string_view text);

}  // namespace rux::table

#endif  // TABLE_CELL_H_
