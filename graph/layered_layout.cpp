#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "graph/geometry.h"
#include "graph/layers.h"
#include "graph/layouts.h"
#include "graph/units.h"

namespace rux::graph {
namespace {

constexpr int kBetween = 12;  // slots of a layer
constexpr int kStub = 12;     // what is level of a line, at its ends
constexpr int kPassingHeight = 4;

class LayeredLayout {
 public:
  LayeredLayout(const Units& units, const Component& component)
      : units_(units), component_(component), layering_(LayersOf(component)) {}

  Block Run() {
    middles_.resize(layering_.slots.size());
    for (const std::vector<std::size_t>& layer : layering_.layers) Stack(layer);
    constexpr int kSweeps = 8;
    for (int sweep = 0; sweep < kSweeps; ++sweep) Align(sweep % 2 == 0);
    ChooseLeftEdges();
    return BlockOf();
  }

 private:
  Size SizeOf(std::size_t slot) const {
    const std::size_t unit = layering_.slots[slot].unit;
    if (layering_.slots[slot].is_passing()) return {0, kPassingHeight};
    return units_[component_.units[unit]].size;
  }
  // How far apart the middles of neighbours must be.
  int Distance(std::size_t upper, std::size_t lower) const {
    return (SizeOf(upper).height + SizeOf(lower).height + 1) / 2 + kBetween;
  }

  void Stack(const std::vector<std::size_t>& layer) {
    for (std::size_t i = 1; i < layer.size(); ++i)
      middles_[layer[i]] = middles_[layer[i - 1]] + Distance(layer[i - 1], layer[i]);
    for (const std::size_t slot : layer) middles_[slot] -= middles_[layer.back()] / 2;
  }

  void Align(bool is_onwards) {
    const std::size_t count = layering_.layers.size();
    for (std::size_t i = 0; i < count; ++i)
      Align(layering_.layers[is_onwards ? i : count - 1 - i], is_onwards);
  }

  // Moves the slots of a layer as near as can be to the middle of what they are connected to, in
  // their order: those that would overlap share the way that they are off.
  void Align(const std::vector<std::size_t>& layer, bool is_onwards) {
    struct Group {
      std::int64_t sum;  // of where its slots want the first slot of the layer to be
      std::int64_t count;
      std::int64_t place() const { return sum / count - (sum % count < 0 ? 1 : 0); }
    };
    std::vector<Group> groups;
    std::vector<std::int64_t> offsets;  // of slots from the first one, when all touch
    for (std::size_t i = 0; i < layer.size(); ++i) {
      offsets.push_back(i == 0 ? 0 : offsets.back() + Distance(layer[i - 1], layer[i]));
      Group group{Wanted(layer[i], is_onwards) - offsets.back(), 1};
      while (!groups.empty() && groups.back().place() >= group.place()) {
        group = {group.sum + groups.back().sum, group.count + groups.back().count};
        groups.pop_back();
      }
      groups.push_back(group);
    }
    std::size_t slot = 0;
    for (const Group& group : groups) {
      for (std::int64_t i = 0; i < group.count; ++i, ++slot)
        middles_[layer[slot]] = group.place() + offsets[slot];
    }
  }

  std::int64_t Wanted(std::size_t slot, bool is_onwards) const {
    const Slot& place = layering_.slots[slot];
    const std::vector<std::size_t>& ends = is_onwards ? place.before : place.after;
    if (ends.empty()) return middles_[slot];
    std::int64_t sum = 0;
    for (const std::size_t end : ends) sum += middles_[end];
    return sum / static_cast<std::int64_t>(ends.size());
  }

  // Steep lines have more room.
  void ChooseLeftEdges() {
    constexpr std::int64_t kLeastGap = 56;
    constexpr std::int64_t kLargestGap = 260;
    constexpr std::int64_t kSteepest = 3;
    int left = 0;
    for (const std::vector<std::size_t>& layer : layering_.layers) {
      int width = 0;
      std::int64_t farthest = 0;
      for (const std::size_t slot : layer) {
        width = std::max(width, SizeOf(slot).width);
        for (const std::size_t end : layering_.slots[slot].after)
          farthest = std::max(farthest, std::abs(middles_[end] - middles_[slot]));
      }
      lefts_.push_back(left);
      rights_.push_back(left + width);
      const std::int64_t gap = std::clamp(farthest / kSteepest, kLeastGap, kLargestGap);
      left += width + static_cast<int>(gap);
    }
  }

  // Whether it passes layers without slots in them: then it goes below all units.
  bool IsBelow(std::size_t link) const {
    const std::vector<std::size_t>& path = layering_.paths[link];
    return layering_.slots[path.back()].layer - layering_.slots[path.front()].layer >= path.size();
  }

  // The points of a link's line that goes along at that height. Between layers nothing is in its
  // way up and down.
  std::vector<Point> PointsBelow(std::size_t link, int top, int lane) const {
    const std::size_t from = layering_.paths[link].front();
    const std::size_t to = layering_.paths[link].back();
    const std::size_t layer = layering_.slots[from].layer;
    const int right = rights_[layer] + kStub;
    const int left = lefts_[layering_.slots[to].layer];
    const int begin = static_cast<int>(middles_[from]) - top;
    const int end = static_cast<int>(middles_[to]) - top;
    return {{lefts_[layer] + SizeOf(from).width, begin},
            {right, begin},
            {right, lane},
            {left - kStub, lane},
            {left - kStub, end},
            {left, end}};
  }

  // The points of a link's line from layer to layer.
  std::vector<Point> PointsOf(std::size_t link, int top) const {
    std::vector<Point> points;
    for (const std::size_t slot : layering_.paths[link]) {
      const bool is_first = points.empty();
      const bool is_last = slot == layering_.paths[link].back();
      const std::size_t layer = layering_.slots[slot].layer;
      const int y = static_cast<int>(middles_[slot]) - top;
      const int own_right = lefts_[layer] + SizeOf(slot).width;
      if (!is_first && !layering_.slots[slot].is_passing())
        points.push_back({lefts_[layer] - kStub, y});
      points.push_back({is_first ? own_right : lefts_[layer], y});
      if (!is_last) points.push_back({rights_[layer] + (is_first ? kStub : 0), y});
    }
    return points;
  }

  Block BlockOf() const {
    std::int64_t top = 0;
    std::int64_t bottom = 0;
    for (std::size_t slot = 0; slot < layering_.slots.size(); ++slot) {
      const int height = SizeOf(slot).height;
      const std::int64_t upper = middles_[slot] - height / 2;
      top = slot == 0 ? upper : std::min(top, upper);
      bottom = slot == 0 ? upper + height : std::max(bottom, upper + height);
    }
    Block block{true, {rights_.back(), static_cast<int>(bottom - top)}, {}, {}};
    for (std::size_t unit = 0; unit < component_.units.size(); ++unit) {
      const std::int64_t upper = middles_[unit] - SizeOf(unit).height / 2;
      block.at.push_back({lefts_[layering_.slots[unit].layer], static_cast<int>(upper - top)});
    }
    for (std::size_t link = 0; link < component_.links.size(); ++link) {
      const int upper = static_cast<int>(top);
      const bool is_below = IsBelow(link);
      if (is_below) block.size.height += kBetween;
      block.lines.push_back(is_below ? PointsBelow(link, upper, block.size.height)
                                     : PointsOf(link, upper));
      if (layering_.is_back[link])
        std::reverse(block.lines.back().begin(), block.lines.back().end());
    }
    return block;
  }

  const Units& units_;
  const Component& component_;
  const Layering layering_;
  std::vector<std::int64_t> middles_;  // by slots
  std::vector<int> lefts_;             // by layers
  std::vector<int> rights_;
};

}  // namespace

Block LayOutLayers(const Units& units, const Component& component) {
  return LayeredLayout(units, component).Run();
}

}  // namespace rux::graph
