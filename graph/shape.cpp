#include "graph/shape.h"

#include <algorithm>
#include <vector>

#include "graph/geometry.h"

namespace rux::graph {
namespace {

Columns Fill(const std::vector<Size>& blocks, Size gap, int height) {
  Columns columns;
  Point at;
  int right = 0;
  for (const Size& block : blocks) {
    if (at.y > 0 && at.y + block.height > height) at = {right + gap.width, 0};
    columns.at.push_back(at);
    right = std::max(right, at.x + block.width);
    columns.size.height = std::max(columns.size.height, at.y + block.height);
    at.y += block.height + gap.height;
  }
  columns.size.width = right;
  return columns;
}

// How many times a drawing is too wide or too high.
double DistanceFromShape(Size size) {
  const double shape = static_cast<double>(size.width) / size.height;
  return std::max(shape / kShape, kShape / shape);
}

// The least number from `low` to `high` that fits, if all larger ones do, too.
template <class Fits>
int Least(int low, int high, Fits fits) {
  while (low < high) {
    const int middle = low + (high - low) / 2;
    if (fits(middle)) {
      high = middle;
    } else {
      low = middle + 1;
    }
  }
  return high;
}

}  // namespace

Columns InColumns(const std::vector<Size>& blocks, Size gap) {
  int tallest = 0;
  int all = 0;
  for (const Size& block : blocks) {
    tallest = std::max(tallest, block.height);
    all += block.height + gap.height;
  }
  const int height = Least(tallest, all, [&](int limit) {
    const Size size = Fill(blocks, gap, limit).size;
    return size.width <= kShape * size.height;
  });
  // One more column may come nearer.
  const Size narrow = Fill(blocks, gap, height).size;
  const Size wide = Fill(blocks, gap, std::max(tallest, narrow.height - 1)).size;
  const int width = DistanceFromShape(wide) < DistanceFromShape(narrow) ? wide.width : narrow.width;
  // What the last column lacks is shared by all of them.
  return Fill(blocks, gap, Least(tallest, all, [&](int limit) {
                return Fill(blocks, gap, limit).size.width <= width;
              }));
}

}  // namespace rux::graph
