#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "graph/geometry.h"
#include "graph/layouts.h"
#include "graph/shape.h"
#include "graph/units.h"

namespace rux::graph {
namespace {

constexpr int kIndent = 22;
constexpr int kTrunk = 11;  // how far from the left edge of its unit, or left of what is in it
constexpr Size kGap{30, 10};

class TreeLayout {
 public:
  TreeLayout(const Units& units, const Component& component)
      : units_(units), component_(component), links_from_(component.units.size()) {
    for (std::size_t link = 0; link < component.links.size(); ++link)
      links_from_[component.links[link].from].push_back(link);
    // What contains nothing is next to what it is in.
    for (std::vector<std::size_t>& links : links_from_) {
      std::stable_partition(links.begin(), links.end(), [&](std::size_t link) {
        return links_from_[component.links[link].to].empty();
      });
    }
  }

  Block Run() {
    const std::vector<std::size_t> order = FromRoot();
    const std::size_t count = component_.units.size();
    block_.at.resize(count);
    block_.lines.resize(component_.links.size());
    sizes_.resize(count);
    columns_.resize(count);
    for (auto unit = order.rbegin(); unit != order.rend(); ++unit) Measure(*unit);
    for (const std::size_t unit : order) PlaceContents(unit);
    block_.size = sizes_[order.front()];
    return std::move(block_);
  }

 private:
  const Unit& UnitAt(std::size_t unit) const { return units_[component_.units[unit]]; }

  // Each unit before what it contains.
  std::vector<std::size_t> FromRoot() const {
    std::vector<bool> is_contained(component_.units.size());
    for (const UnitLink& link : component_.links) is_contained[link.to] = true;
    const auto root = std::find(is_contained.begin(), is_contained.end(), false);
    std::vector<std::size_t> order = {static_cast<std::size_t>(root - is_contained.begin())};
    for (std::size_t i = 0; i < order.size(); ++i) {
      for (const std::size_t link : links_from_[order[i]])
        order.push_back(component_.links[link].to);
    }
    return order;
  }

  void Measure(std::size_t unit) {
    sizes_[unit] = UnitAt(unit).size;
    if (links_from_[unit].empty()) return;
    std::vector<Size> contents;
    for (const std::size_t link : links_from_[unit])
      contents.push_back(sizes_[component_.links[link].to]);
    columns_[unit] = InColumns(contents, kGap);
    const Size& inside = columns_[unit].size;
    sizes_[unit] = {std::max(sizes_[unit].width, kIndent + inside.width),
                    sizes_[unit].height + kGap.height + inside.height};
  }

  void PlaceContents(std::size_t unit) {
    const Point at = block_.at[unit];
    const int bottom = at.y + UnitAt(unit).size.height;
    const Point inside{at.x + kIndent, bottom + kGap.height};
    for (std::size_t i = 0; i < links_from_[unit].size(); ++i) {
      const std::size_t link = links_from_[unit][i];
      const std::size_t contained = component_.links[link].to;
      const Point place = inside + columns_[unit].at[i];
      block_.at[contained] = place;
      const int y = place.y + UnitAt(contained).attach();
      const int trunk = place.x - kTrunk;
      std::vector<Point>& line = block_.lines[link];
      line = {{at.x + kTrunk, bottom}};
      if (trunk != line.front().x) {
        const int bus = bottom + kGap.height / 2;
        line.insert(line.end(), {{line.front().x, bus}, {trunk, bus}});
      }
      line.insert(line.end(), {{trunk, y}, {place.x, y}});
    }
  }

  const Units& units_;
  const Component& component_;
  std::vector<std::vector<std::size_t>> links_from_;  // by units
  std::vector<Size> sizes_;                           // of units with all that is in them
  std::vector<Columns> columns_;                      // of what is in them
  Block block_{false, {}, {}, {}};
};

}  // namespace

Block LayOutTree(const Units& units, const Component& component) {
  return TreeLayout(units, component).Run();
}

}  // namespace rux::graph
