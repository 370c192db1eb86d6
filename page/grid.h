// A table that may have very many rows: those after the first ones are for browsers without
// scripts, and for the page's own script, which shows the rows that were searched for.
#ifndef PAGE_GRID_H_
#define PAGE_GRID_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "page/html.h"

namespace rux::page {

class Grid {
 public:
  // `things`: what the rows are, such as "sensors".
  Grid(std::string_view things, const Html& caption) : things_(things), caption_(caption) {}

  // Cells of numbers are aligned by their last digit: the style has a class for each such column.
  enum class Align { kText, kNumber };
  void AddColumn(const Html& title, Align align = Align::kText) {
    columns_.push_back({title, align});
  }
  std::size_t columns() const { return columns_.size(); }
  // What begins with <tr>; the first cell is the row's header.
  void AddRow(const Html& row);

  void Write(Html& out) const;

 private:
  struct Column {
    Html title;
    Align align;
  };

  // More than a screen or two are found by searching.
  static constexpr std::size_t kMostShown = 200;

  void WriteRows(std::string_view rows, Html& out) const;

  const std::string things_;
  const Html caption_;
  std::vector<Column> columns_;
  Html rows_;
  std::size_t row_count_ = 0;
  std::size_t first_end_ = 0;  // of the rows that are shown at first
};

}  // namespace rux::page

#endif  // PAGE_GRID_H_
