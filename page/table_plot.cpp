#include "page/table_plot.h"

#include <array>
#include <cstddef>
#include <optional>
#include <tuple>

#include "page/html.h"
#include "page/sources.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/model/records.h"

namespace rux::page {
namespace {

namespace language = ruxcomp::language;

constexpr std::size_t kCells = std::tuple_size_v<ruxcomp::TableCells>;
constexpr int kTop = 255;  // the largest cell

// Steps of one cell each: no line between two cells says what is between them.
void WriteLineOf(const ruxcomp::TableCells& cells, Html& out) {
  out << "<path class=l d=\"M0 " << kTop - cells[0];
  for (std::size_t i = 1; i < kCells; ++i) {
    if (cells[i] != cells[i - 1]) out << "H" << i << "V" << kTop - cells[i];
  }
  out << "H256\"/>";
}

// write(first, last, is_set) for each stretch of cells that rows set, or do not.
template <class Write>
void ForEachStretch(const std::array<bool, kCells>& is_set, Write write) {
  for (std::size_t first = 0; first < kCells;) {
    std::size_t last = first;
    while (last + 1 < kCells && is_set[last + 1] == is_set[first]) ++last;
    write(first, last, is_set[first]);
    first = last + 1;
  }
}

std::array<bool, kCells> CellsSetBy(const Excerpt& source) {
  std::array<bool, kCells> is_set{};
  for (const Excerpt::Item& item : source.items) {
    const language::CellRange range = language::SplitCellRange(item.key);
    const language::Number low = language::ReadNumber(range.low);
    const language::Number high = language::ReadNumber(range.high);
    if (!low.is_number || !high.is_number) continue;
    for (std::size_t i = low.value; i <= high.value && i < kCells; ++i) is_set[i] = true;
  }
  return is_set;
}

void WriteRows(const ruxcomp::TableCells& cells, Html& out) {
  constexpr std::size_t kMostOpen = 24;  // rows beside a drawing
  Html rows;
  std::size_t count = 0;
  for (std::size_t first = 0; first < kCells; ++count) {
    std::size_t last = first;
    while (last + 1 < kCells && cells[last + 1] == cells[first]) ++last;
    rows << "<tr><th scope=row>" << first;
    if (last > first) rows << "\u2013" << last;
    rows << "<td class=n>" << static_cast<unsigned>(cells[first]);
    first = last + 1;
  }
  out << (count <= kMostOpen ? Html() << "<details open>" : Html() << "<details>")
      << "<summary>All cells</summary><table><caption>Cells</caption><thead><tr><th "
         "scope=col>cells<th scope=col "
         "class=n>value<tbody>"
      << rows << "</table></details>";
}

}  // namespace

void WritePlot(const ruxcomp::TableCells& cells, const std::optional<Excerpt>& source, Html& out) {
  out << "<div class=two><figure><svg class=plot viewBox=\"-26 -8 290 300\" aria-hidden=true><path "
         "class=x d=\"M0 0V255H256M0 127H256M64 0V255M128 0V255M192 0V255\"/><text x=-4 y=4 "
         "class=e>255</text><text x=-4 y=131 class=e>128</text><text x=-4 y=259 "
         "class=e>0</text><text "
         "x=0 y=285>0</text><text x=128 y=285 class=m>128</text><text x=256 y=285 "
         "class=e>255</text>";
  if (source) {
    ForEachStretch(CellsSetBy(*source), [&](std::size_t first, std::size_t last, bool is_set) {
      if (is_set) {
        out << "<path class=o";
      } else {
        out << "<path class=u";
      }
      out << " d=\"M" << first << " 260H" << last + 1 << "V268H" << first << "z\"/>";
    });
  }
  WriteLineOf(cells, out);
  out << "</svg>";
  if (source) out << "<figcaption>The bar: cells that rows set; grey: others.</figcaption>";
  out << "</figure>";
  WriteRows(cells, out);
  out << "</div>";
}

}  // namespace rux::page
