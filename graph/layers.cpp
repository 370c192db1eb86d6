#include "graph/layers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "graph/layouts.h"
#include "graph/units.h"

namespace rux::graph {
namespace {

class Layerer {
 public:
  explicit Layerer(const Component& component)
      : component_(component),
        links_from_(component.units.size()),
        layer_of_(component.units.size()) {
    result_.is_back.resize(component.links.size());
    for (std::size_t link = 0; link < component.links.size(); ++link)
      links_from_[component.links[link].from].push_back(link);
  }

  Layering Run() {
    const std::vector<std::size_t> order = FromSources();
    ChooseLayers(order);
    AddSlots();
    for (int sweep = 0; sweep < kSweeps; ++sweep) Sweep(sweep % 2 == 0);
    return std::move(result_);
  }

 private:
  static constexpr int kSweeps = 12;
  static constexpr std::size_t kMostPassed = 64;  // layers, by a line with slots in them

  struct Ends {
    std::size_t from;
    std::size_t to;
  };
  // Those of a link, from the earlier layer to the later one.
  Ends EndsOf(std::size_t link) const {
    const UnitLink& ends = component_.links[link];
    if (result_.is_back[link]) return {ends.to, ends.from};
    return {ends.from, ends.to};
  }

  // The units such that all links but those that close circles lead onwards.
  std::vector<std::size_t> FromSources() {
    std::vector<bool> has_source(component_.units.size());
    for (const UnitLink& link : component_.links) has_source[link.to] = true;
    for (const bool wanted : {false, true}) {
      for (std::size_t unit = 0; unit < component_.units.size(); ++unit) {
        if (has_source[unit] == wanted) Visit(unit);
      }
    }
    std::reverse(finished_.begin(), finished_.end());
    return finished_;
  }

  void Visit(std::size_t first) {
    enum : std::uint8_t { kNew, kOpen, kFinished };
    state_.resize(component_.units.size(), kNew);
    if (state_[first] != kNew) return;
    std::vector<std::pair<std::size_t, std::size_t>> open = {{first, 0}};  // with the next link
    state_[first] = kOpen;
    while (!open.empty()) {
      auto& [unit, next] = open.back();
      if (next == links_from_[unit].size()) {
        state_[unit] = kFinished;
        finished_.push_back(unit);
        open.pop_back();
        continue;
      }
      const std::size_t link = links_from_[unit][next++];
      const std::size_t to = component_.links[link].to;
      if (state_[to] == kOpen) result_.is_back[link] = true;
      if (state_[to] != kNew) continue;
      state_[to] = kOpen;
      open.emplace_back(to, 0);
    }
  }

  // The earliest for each; for sources, the last before what they lead to.
  void ChooseLayers(const std::vector<std::size_t>& order) {
    std::vector<std::vector<std::size_t>> later(component_.units.size());
    std::vector<bool> has_earlier(component_.units.size());
    for (std::size_t link = 0; link < component_.links.size(); ++link) {
      const Ends ends = EndsOf(link);
      later[ends.from].push_back(ends.to);
      has_earlier[ends.to] = true;
    }
    for (const std::size_t unit : order) {
      for (const std::size_t to : later[unit])
        layer_of_[to] = std::max(layer_of_[to], layer_of_[unit] + 1);
    }
    for (const std::size_t unit : order) {
      if (has_earlier[unit] || later[unit].empty()) continue;
      std::size_t first = layer_of_[later[unit].front()];
      for (const std::size_t to : later[unit]) first = std::min(first, layer_of_[to]);
      layer_of_[unit] = first - 1;
    }
  }

  std::size_t AddSlot(std::size_t unit, std::size_t layer) {
    result_.slots.push_back({unit, layer, {}, {}});
    if (result_.layers.size() <= layer) result_.layers.resize(layer + 1);
    result_.layers[layer].push_back(result_.slots.size() - 1);
    return result_.slots.size() - 1;
  }

  void AddSlots() {
    for (std::size_t unit = 0; unit < layer_of_.size(); ++unit) AddSlot(unit, layer_of_[unit]);
    for (std::size_t link = 0; link < component_.links.size(); ++link) {
      const auto [from, to] = EndsOf(link);
      std::vector<std::size_t> path = {from};
      if (layer_of_[to] - layer_of_[from] <= kMostPassed) {
        for (std::size_t layer = layer_of_[from] + 1; layer < layer_of_[to]; ++layer)
          path.push_back(AddSlot(Slot::kPassing, layer));
      }
      path.push_back(to);
      for (std::size_t i = 1; i < path.size(); ++i) {
        result_.slots[path[i - 1]].after.push_back(path[i]);
        result_.slots[path[i]].before.push_back(path[i - 1]);
      }
      result_.paths.push_back(std::move(path));
    }
  }

  // Where a slot is connected to, as a share of the height of the layers on that side. What few
  // others are connected to counts more: it can be near to all of them.
  double Wanted(std::size_t slot, const std::vector<double>& places, bool is_onwards) const {
    const Slot& wanting = result_.slots[slot];
    double sum = 0;
    double weights = 0;
    for (const std::size_t end : is_onwards ? wanting.before : wanting.after) {
      const Slot& other = result_.slots[end];
      const std::size_t sharing = (is_onwards ? other.after : other.before).size();
      const double weight = 1 / static_cast<double>(sharing);
      sum += weight * places[end];
      weights += weight;
    }
    return weights > 0 ? sum / weights : places[slot];
  }

  // Sorts each layer by where its slots are connected to in the layers that are sorted already.
  void Sweep(bool is_onwards) {
    std::vector<double> places(result_.slots.size());
    const auto note = [&](const std::vector<std::size_t>& layer) {
      for (std::size_t i = 0; i < layer.size(); ++i)
        places[layer[i]] = (static_cast<double>(i) + 0.5) / static_cast<double>(layer.size());
    };
    for (const std::vector<std::size_t>& layer : result_.layers) note(layer);
    std::vector<double> wanted(result_.slots.size());
    for (std::size_t i = 0; i < result_.layers.size(); ++i) {
      std::vector<std::size_t>& layer =
          result_.layers[is_onwards ? i : result_.layers.size() - 1 - i];
      for (const std::size_t slot : layer) wanted[slot] = Wanted(slot, places, is_onwards);
      std::stable_sort(layer.begin(), layer.end(), [&](std::size_t one, std::size_t other) {
        return wanted[one] < wanted[other];
      });
      note(layer);
    }
  }

  const Component& component_;
  std::vector<std::vector<std::size_t>> links_from_;  // by units
  std::vector<std::size_t> layer_of_;                 // by units
  std::vector<std::uint8_t> state_;                   // by units, while they are visited
  std::vector<std::size_t> finished_;
  Layering result_;
};

}  // namespace

Layering LayersOf(const Component& component) { return Layerer(component).Run(); }

}  // namespace rux::graph
