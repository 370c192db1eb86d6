#include "graph/units.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "graph/drawing.h"
#include "graph/geometry.h"
#include "graph/graph.h"
#include "graph/shape.h"
#include "graph/twins.h"
#include "support/safe_text.h"
#include "support/utf8.h"

namespace rux::graph {
namespace {

constexpr int kLineHeight = 24;
constexpr int kFraming = 7;  // of boxes in a frame
constexpr int kCellGap = 6;  // between them

// Long names differ at their ends as often as at their beginnings.
std::string Fitting(const std::string& label) {
  constexpr std::size_t kMost = 36;
  constexpr std::size_t kBeginning = 22;
  if (support::Columns(label) <= kMost) return label;
  std::string_view rest = label;
  std::string beginning;
  std::string end;
  for (std::size_t columns = 0; columns < kBeginning;) {
    const support::Character character = support::FirstCharacter(rest);
    columns += support::Columns(character);
    beginning += character.bytes;
    rest.remove_prefix(character.bytes.size());
  }
  for (std::size_t columns = kBeginning + 1; columns < kMost;) {
    const support::Character character = support::LastCharacter(rest);
    columns += support::Columns(character);
    end.insert(0, character.bytes);
    rest.remove_suffix(character.bytes.size());
  }
  return beginning + "\u2026" + end;
}

BoxText TextOf(const Graph& graph, const Node& node, bool is_looped) {
  BoxText text{Fitting(LabelOf(graph, node)), ""};
  if (const std::string hidden = HiddenText(node); !hidden.empty()) text.marks = " " + hidden;
  if (is_looped) text.marks += " \u21BB";
  return text;
}

// A frame a little wider than high.
void Arrange(Unit& unit) {
  const auto count = static_cast<double>(unit.nodes.size());
  const double shape = kShape * (unit.cell.height + kCellGap) / (unit.cell.width + kCellGap);
  unit.columns = static_cast<std::size_t>(std::max(1.0, std::round(std::sqrt(count * shape))));
  const std::size_t rows = (unit.nodes.size() + unit.columns - 1) / unit.columns;
  const auto extent = [](std::size_t cells, int cell) {
    return static_cast<int>(cells) * (cell + kCellGap) - kCellGap + 2 * kFraming;
  };
  unit.size = {extent(unit.columns, unit.cell.width), extent(rows, unit.cell.height)};
}

}  // namespace

int Unit::attach() const { return (is_frame() ? kFraming : 0) + cell.height / 2; }

Units::Units(const Graph& graph) {
  std::vector<bool> is_looped(graph.nodes.size());
  for (const Edge& edge : graph.edges) {
    if (edge.from == edge.to) is_looped[edge.from] = true;
  }
  for (std::size_t node = 0; node < graph.nodes.size(); ++node)
    texts_.push_back(TextOf(graph, graph.nodes[node], is_looped[node]));
  std::vector<std::size_t> unit_of(graph.nodes.size());
  for (std::vector<std::size_t>& nodes : TwinsOf(graph)) {
    Unit unit{std::move(nodes), 1, {}, {}};
    for (const std::size_t node : unit.nodes) {
      unit_of[node] = units_.size();
      const int width = TextWidth(texts_[node].label + texts_[node].marks) + 2 * kTextPadding;
      unit.cell = {std::max(unit.cell.width, width), kLineHeight};
    }
    unit.size = unit.cell;
    if (unit.is_frame()) Arrange(unit);
    units_.push_back(std::move(unit));
  }
  // The first nodes of two units are connected if any of theirs are.
  for (std::size_t i = 0; i < graph.edges.size(); ++i) {
    const Edge& edge = graph.edges[i];
    const std::size_t from = unit_of[edge.from];
    const std::size_t to = unit_of[edge.to];
    const bool are_first =
        units_[from].nodes.front() == edge.from && units_[to].nodes.front() == edge.to;
    if (are_first && from != to) links_.push_back({from, to, i});
  }
}

void Units::Place(std::size_t unit, Point at, Drawing& drawing) const {
  const Unit& placed = units_[unit];
  const int framing = placed.is_frame() ? kFraming : 0;
  if (placed.is_frame()) drawing.frames.push_back({at, placed.size});
  const std::size_t rows = (placed.nodes.size() + placed.columns - 1) / placed.columns;
  for (std::size_t i = 0; i < placed.nodes.size(); ++i) {
    const Point cell{static_cast<int>(i / rows) * (placed.cell.width + kCellGap) + framing,
                     static_cast<int>(i % rows) * (placed.cell.height + kCellGap) + framing};
    drawing.nodes[placed.nodes[i]] = {at + cell, placed.cell};
  }
}

}  // namespace rux::graph
