#include "page/grid.h"

#include <cstddef>
#include <string_view>

#include "page/html.h"

namespace rux::page {

void Grid::AddRow(const Html& row) {
  rows_ << row << "\n";
  if (++row_count_ <= kMostShown) first_end_ = rows_.markup().size();
}

void Grid::WriteRows(std::string_view rows, Html& out) const {
  out << "<table class=\"";
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (columns_[i].align == Align::kNumber) out << "n" << i + 1 << " ";
  }
  out << "\"><caption>" << caption_ << "</caption><thead><tr>";
  for (const Column& column : columns_) out << "<th scope=col>" << column.title << "</th>";
  out << "</tr></thead><tbody>\n";
  out.Trusted(rows);
  out << "</tbody></table>";
}

void Grid::Write(Html& out) const {
  const std::string_view rows = rows_.markup();
  out << "<div class=grid data-things=\"" << Text{things_}
      << "\"><div class=scroll role=region tabindex=0 aria-label=\"" << Text{things_} << "\">";
  WriteRows(rows.substr(0, first_end_), out);
  out << "</div>";
  if (first_end_ < rows.size()) {
    out << "<noscript>";
    WriteRows(rows.substr(first_end_), out);
    out << "</noscript>";
  }
  out << "</div>\n";
}

}  // namespace rux::page
