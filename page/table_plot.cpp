#include "page/table_plot.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
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
constexpr std::size_t kPlotWidth = 256;  // of a drawing
constexpr std::size_t kPlotHeight = 256;

// What of the cells is drawn: up to the last step and the largest value.
class Axes {
 public:
  explicit Axes(const ruxcomp::TableCells& cells) {
    constexpr std::size_t kFewest = 4;
    std::size_t last_step = 0;
    for (std::size_t i = 1; i < kCells; ++i) {
      if (cells[i] != cells[i - 1]) last_step = i;
    }
    while (end_ < kFewest || end_ < last_step + 1) end_ *= 2;
    constexpr std::size_t kTops[] = {4, 10, 20, 40, 60, 100, 160, 200};
    const std::size_t largest = *std::max_element(cells.begin(), cells.end());
    const auto* fitting = std::lower_bound(std::begin(kTops), std::end(kTops), largest);
    if (fitting != std::end(kTops)) top_ = *fitting;
  }

  std::size_t end() const { return end_; }  // of the cells; a power of two
  std::size_t top() const { return top_; }
  std::size_t X(std::size_t cell) const { return std::min(cell, end_) * kPlotWidth / end_; }
  std::size_t Y(std::size_t value) const { return kPlotHeight - value * kPlotHeight / top_; }

 private:
  std::size_t end_ = 1;
  std::size_t top_ = 255;
};

// Steps of one cell each: no line between two cells says what is between them.
void WriteLineOf(const ruxcomp::TableCells& cells, const Axes& axes, Html& out) {
  out << "<path class=l d=\"M0 " << axes.Y(cells[0]);
  for (std::size_t i = 1; i < kCells; ++i) {
    if (cells[i] != cells[i - 1]) out << "H" << axes.X(i) << "V" << axes.Y(cells[i]);
  }
  out << "H256\"/>";
}

void WriteAxes(const Axes& axes, Html& out) {
  out << "<svg class=plot viewBox=\"-30 -24 294 324\" aria-hidden=true><path class=x d=\"M0 "
         "0V256H256M0 0H256M0 128H256M64 0V256M128 0V256M192 0V256\"/><text x=-4 y=-10 "
         "class=e>value</text><text x=-4 y=4 class=e>"
      << axes.top() << "</text>";
  if (axes.top() % 2 == 0) out << "<text x=-4 y=132 class=e>" << axes.top() / 2 << "</text>";
  out << "<text x=-4 y=260 class=e>0</text><text x=0 y=283>0</text><text x=128 y=283 class=m>"
      << axes.end() / 2 << "</text><text x=256 y=283 class=e>" << axes.end() - 1
      << "</text><text x=128 y=296 class=m>index</text>";
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
      << "<summary>Cells</summary><table aria-label=cells><thead><tr><th "
         "scope=col>index<th scope=col "
         "class=n>value<tbody>"
      << rows << "</table></details>";
}

}  // namespace

void WritePlot(const ruxcomp::TableCells& cells, const std::optional<Excerpt>& source, Html& out) {
  const Axes axes(cells);
  out << "<div class=two><figure>";
  WriteAxes(axes, out);
  if (source) {
    ForEachStretch(CellsSetBy(*source), [&](std::size_t first, std::size_t last, bool is_set) {
      if (is_set) {
        out << "<path class=o";
      } else {
        out << "<path class=u";
      }
      out << " d=\"M" << axes.X(first) << " 261H" << axes.X(last + 1) << "V269H" << axes.X(first)
          << "z\"/>";
    });
  }
  WriteLineOf(cells, axes, out);
  out << "</svg>";
  out << "<figcaption>";
  if (axes.end() < kCells)
    out << "Cells " << axes.end() << "\u2013" << kCells - 1 << ": "
        << static_cast<unsigned>(cells.back()) << ". ";
  if (source) out << "The bar: cells that rows set; grey: others.";
  out << "</figcaption>";
  out << "</figure>";
  WriteRows(cells, out);
  out << "</div>";
}

}  // namespace rux::page
