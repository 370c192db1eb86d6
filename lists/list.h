// A list of sensors that others keep, as its file has it.
#ifndef LISTS_LIST_H_
#define LISTS_LIST_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ruxcomp/language/entries.h"

namespace rux::lists {

struct ListCell {
  std::size_t column;  // its place in List::columns
  std::string text;
};

// Rows keep only what they have: the cells of a file are as many as its bytes at most, those of all
// rows and columns would be as many as the product.
struct ListRow {
  std::uint32_t line;           // from 1
  std::vector<ListCell> cells;  // in the order of the columns; the others are empty

  // The text of that cell; empty when the row does not have it.
  const std::string& CellIn(std::size_t column) const;
};

struct List {
  std::vector<std::string> columns;  // by the names that the file or its program gives them
  std::vector<ListRow> rows;         // in the order of the file
};

// The entry of sections that a column has.
struct Meaning {
  ruxcomp::language::EntryId entry;  // ENTRY_THRESHOLD_FH
  std::string_view name;             // of the column: "ucr"
};

// The text without blanks at its ends.
std::string_view Trimmed(std::string_view text);

// Whether that is how lists leave a number out: "", "na", "N/A", "-".
bool IsNothing(std::string_view text);

}  // namespace rux::lists

#endif  // LISTS_LIST_H_
