// Whatever a graph is like, its picture has no text over another and no line under one, and what a
// part of it leaves out is counted.
#include "graph/graph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "browse/relations.h"
#include "graph/bounds.h"
#include "graph/drawing.h"
#include "graph/forms.h"
#include "graph/forms/svg.h"
#include "graph/geometry.h"
#include "graph/selection.h"
#include "graph/shortcuts.h"
#include "ruxcomp/language/sections.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace {

namespace language = ruxcomp::language;
using rux::graph::Box;
using rux::graph::Counts;
using rux::graph::Drawing;
using rux::graph::Edge;
using rux::graph::Graph;
using rux::graph::Line;
using rux::graph::Node;
using rux::graph::Point;

class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  std::size_t Below(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
  }

  // A tree, or anything, circles and loops among it.
  Graph Any(bool is_hierarchy) {
    Graph graph{
        "a.rux", &rux::graph::FindSelection(is_hierarchy ? "pelm" : "references")->subject, {}, {}};
    const std::size_t count = 1 + Below(120);
    for (std::size_t node = 0; node < count; ++node) AddNode(graph);
    std::set<std::pair<std::size_t, std::size_t>> ends;
    const std::size_t edges = is_hierarchy ? count : Below(2 * count);
    const std::size_t stray = is_hierarchy ? Below(3) * Below(3) : edges;
    for (std::size_t node = 1; is_hierarchy && node < count; ++node) {
      if (Below(20) > 0) ends.emplace(Below(std::min<std::size_t>(node, 1 + count / 8)), node);
    }
    for (std::size_t i = 0; i < stray; ++i) ends.emplace(Below(count), Below(count));
    for (const auto& [from, to] : ends) graph.edges.push_back({from, to, {{"VALUE", {}}}});
    return graph;
  }

  // Each uses the next one.
  Graph Chain(std::size_t length) {
    Graph graph{"a.rux", &rux::graph::FindSelection("references")->subject, {}, {}};
    for (std::size_t node = 0; node < length; ++node) {
      AddNode(graph);
      if (node > 0) graph.edges.push_back({node - 1, node, {{"VALUE", {}}}});
    }
    return graph;
  }

 private:
  void AddNode(Graph& graph) {
    static constexpr language::SectionId kKinds[] = {
        language::SECTION_SENSOR, language::SECTION_PELMGROUP, language::SECTION_ACTION};
    rux::browse::Thing thing{&language::KindOf(kKinds[Below(3)])};
    // The number makes it the only one of its name.
    thing.name = Name() + std::to_string(graph.nodes.size());
    thing.id = static_cast<std::uint32_t>(graph.nodes.size());
    graph.nodes.push_back({thing});
  }

  std::string Name() {
    static const char* const pieces[] = {
        "FAN", " ",    "\"",        "]",    "<b>", "&amp;",        "\\n", "\xE6\xB8\xA9",
        "\n",  "\xFF", "e\xCC\x81", "#35;", "`",   "\xEF\xBF\xBE", "--"};
    std::string name;
    for (std::size_t count = Below(12); count > 0; --count)
      name += pieces[Below(sizeof pieces / sizeof *pieces)];
    return name;
  }

  std::mt19937 random_;
};

bool Overlap(const Box& a, const Box& b) {
  return a.at.x < b.right() && b.at.x < a.right() && a.at.y < b.bottom() && b.at.y < a.bottom();
}

bool IsInside(const Box& inner, const Box& outer) {
  return inner.at.x >= outer.at.x && inner.at.y >= outer.at.y && inner.right() <= outer.right() &&
         inner.bottom() <= outer.bottom();
}

bool IsOnEdge(const Point& point, const Box& box) {
  const bool is_beside = point.x == box.at.x || point.x == box.right();
  const bool is_above = point.y == box.at.y || point.y == box.bottom();
  return (is_beside && point.y >= box.at.y && point.y <= box.bottom()) ||
         (is_above && point.x >= box.at.x && point.x <= box.right());
}

struct Segment {
  Point from;
  Point to;
};

std::vector<Segment> SegmentsOf(const Line& line) {
  std::vector<Segment> segments;
  for (std::size_t i = 1; i < line.points.size(); ++i)
    segments.push_back({line.points[i - 1], line.points[i]});
  return segments;
}

// On which side of a segment a point is: less than 0, 0 for on its line, more than 0.
long long SideOf(const Segment& segment, const Point& point) {
  const long long x = segment.to.x - segment.from.x;
  const long long y = segment.to.y - segment.from.y;
  return x * (point.y - segment.from.y) - y * (point.x - segment.from.x);
}

bool AreApart(const Segment& a, const Segment& b) {
  return std::max(a.from.x, a.to.x) < std::min(b.from.x, b.to.x) ||
         std::max(b.from.x, b.to.x) < std::min(a.from.x, a.to.x) ||
         std::max(a.from.y, a.to.y) < std::min(b.from.y, b.to.y) ||
         std::max(b.from.y, b.to.y) < std::min(a.from.y, a.to.y);
}

bool Meet(const Segment& a, const Segment& b) {
  const auto separates = [](const Segment& line, const Segment& other) {
    const long long from = SideOf(line, other.from);
    const long long to = SideOf(line, other.to);
    return (from > 0 && to > 0) || (from < 0 && to < 0);
  };
  return !AreApart(a, b) && !separates(a, b) && !separates(b, a);
}

// Through the inside of the box.
bool Crosses(const Segment& segment, const Box& box) {
  const Point corners[] = {{box.at.x + 1, box.at.y + 1},
                           {box.right() - 1, box.at.y + 1},
                           {box.right() - 1, box.bottom() - 1},
                           {box.at.x + 1, box.bottom() - 1}};
  for (std::size_t i = 0; i < 4; ++i) {
    if (Meet(segment, {corners[i], corners[(i + 1) % 4]})) return true;
  }
  return false;
}

// What a line begins or ends at: the frame of the node if it has one.
const Box& BorderOf(std::size_t node, const Drawing& drawing) {
  for (const Box& frame : drawing.frames) {
    if (IsInside(drawing.nodes[node], frame)) return frame;
  }
  return drawing.nodes[node];
}

bool AreApart(const std::vector<Box>& boxes) {
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (Overlap(boxes[i], boxes[j])) return false;
    }
  }
  return true;
}

bool FitsIn(const Box& box, const std::vector<Box>& frames) {
  return std::all_of(frames.begin(), frames.end(), [&](const Box& frame) {
    return IsInside(box, frame) || !Overlap(box, frame);
  });
}

void ExpectTextFits(const rux::graph::BoxText& text, const Box& box) {
  const int width = rux::graph::TextWidth(text.label + text.marks);
  EXPECT_LE(width + 2 * rux::graph::kTextPadding, box.size.width);
}

void ExpectTextsApart(const Drawing& drawing) {
  EXPECT_TRUE(AreApart(drawing.nodes));
  EXPECT_TRUE(AreApart(drawing.frames));
  for (std::size_t i = 0; i < drawing.nodes.size(); ++i) {
    const Box& box = drawing.nodes[i];
    ExpectTextFits(drawing.texts[i], box);
    EXPECT_TRUE(IsInside(box, {{0, 0}, drawing.size}));
    EXPECT_TRUE(FitsIn(box, drawing.frames));
  }
}

bool CrossesAny(const Line& line, const std::vector<Box>& boxes) {
  for (const Segment& segment : SegmentsOf(line)) {
    if (std::any_of(boxes.begin(), boxes.end(),
                    [&](const Box& box) { return Crosses(segment, box); }))
      return true;
  }
  return false;
}

void ExpectLinesAtTheirEnds(const Graph& graph, const Drawing& drawing) {
  for (const Line& line : drawing.lines) {
    const Edge& edge = graph.edges[line.edge];
    ASSERT_GE(line.points.size(), 2U);
    EXPECT_TRUE(IsOnEdge(line.points.front(), BorderOf(edge.from, drawing)));
    EXPECT_TRUE(IsOnEdge(line.points.back(), BorderOf(edge.to, drawing)));
    EXPECT_FALSE(CrossesAny(line, drawing.nodes));
  }
}

// Each node has its line, or is in a frame that has.
void ExpectAllEdgesDrawn(const Graph& graph, const Drawing& drawing) {
  using Ends = std::set<std::pair<const Box*, const Box*>>;
  Ends edges;
  Ends lines;
  for (const Edge& edge : graph.edges) {
    if (edge.from != edge.to)
      edges.emplace(&BorderOf(edge.from, drawing), &BorderOf(edge.to, drawing));
  }
  for (const Line& line : drawing.lines) {
    const Edge& edge = graph.edges[line.edge];
    lines.emplace(&BorderOf(edge.from, drawing), &BorderOf(edge.to, drawing));
  }
  EXPECT_EQ(lines, edges);
  EXPECT_EQ(lines.size(), drawing.lines.size());
}

bool Meet(const Line& one, const Line& other) {
  for (const Segment& a : SegmentsOf(one)) {
    for (const Segment& b : SegmentsOf(other)) {
      if (Meet(a, b)) return true;
    }
  }
  return false;
}

// Lines from one container run together.
void ExpectNoLinesCross(const Graph& graph, const Drawing& drawing) {
  for (const Line& one : drawing.lines) {
    for (const Line& other : drawing.lines) {
      const bool are_of_one = graph.edges[one.edge].from == graph.edges[other.edge].from;
      EXPECT_TRUE(are_of_one || !Meet(one, other));
    }
  }
}

bool IsForest(const Graph& graph) {
  const rux::graph::Neighbours neighbours(graph);
  std::vector<std::size_t> open;
  for (std::size_t node = 0; node < graph.nodes.size(); ++node) {
    if (neighbours.from[node].size() > 1) return false;
    if (neighbours.from[node].empty()) open.push_back(node);
  }
  for (std::size_t i = 0; i < open.size(); ++i)
    open.insert(open.end(), neighbours.to[open[i]].begin(), neighbours.to[open[i]].end());
  return open.size() == graph.nodes.size();
}

TEST(Graph, DrawsNoTextOverAnotherAndNoLineUnderOne) {
  std::size_t forests = 0;
  constexpr unsigned kSeeds = 300;
  for (unsigned seed = 0; seed < kSeeds; ++seed) {
    SCOPED_TRACE(seed);
    Graph graph = Generator(seed).Any(seed % 2 == 0);
    if (seed % 3 == 0) graph = rux::graph::WithoutShortcuts(std::move(graph));
    const Drawing drawing = rux::graph::Draw(graph);
    ExpectTextsApart(drawing);
    ExpectLinesAtTheirEnds(graph, drawing);
    ExpectAllEdgesDrawn(graph, drawing);
    if (!graph.subject->is_hierarchy || !IsForest(graph)) continue;
    ++forests;
    ExpectNoLinesCross(graph, drawing);
  }
  EXPECT_GT(forests, kSeeds / 8);
}

// So long that lines past all of it have no room between the boxes.
TEST(Graph, DrawsLinesAroundALongChain) {
  constexpr std::size_t kLength = 150;
  Graph graph = Generator(1).Chain(kLength);
  for (const auto& [from, to] : {std::pair<std::size_t, std::size_t>{0, kLength - 1},
                                 {0, kLength / 2},
                                 {3, kLength - 5},
                                 {kLength - 1, 2}})
    graph.edges.push_back({from, to, {{"VALUE", {}}}});
  const Drawing drawing = rux::graph::Draw(graph);
  ExpectTextsApart(drawing);
  ExpectLinesAtTheirEnds(graph, drawing);
  ExpectAllEdgesDrawn(graph, drawing);
}

// How many things of each kind a graph shows.
Counts ShownIn(const Graph& graph) {
  Counts counts;
  for (const Node& node : graph.nodes) {
    if (node.rest == 0) ++counts[node.thing.kind];
  }
  return counts;
}

std::size_t SumOf(const Counts& counts) {
  std::size_t sum = 0;
  for (const auto& [kind, count] : counts) sum += count;
  return sum;
}

// The things that each thing is connected to, or as many as are shown and hidden.
std::map<std::string, std::size_t> ConnectionsOf(const Graph& graph) {
  std::vector<std::set<std::size_t>> others(graph.nodes.size());
  for (const Edge& edge : graph.edges) {
    if (edge.from == edge.to) continue;
    others[edge.from].insert(edge.to);
    others[edge.to].insert(edge.from);
  }
  std::map<std::string, std::size_t> connections;
  for (std::size_t node = 0; node < graph.nodes.size(); ++node) {
    if (graph.nodes[node].rest > 0) continue;
    std::size_t& count = connections[*graph.nodes[node].thing.name];
    count = SumOf(graph.nodes[node].hidden);
    for (const std::size_t other : others[node]) count += graph.nodes[other].count();
  }
  return connections;
}

void ExpectAllCounted(const Graph& graph, const Graph& part) {
  Counts all = part.left_out;
  for (const auto& [kind, count] : ShownIn(part)) all[kind] += count;
  EXPECT_EQ(all, ShownIn(graph));
  const std::map<std::string, std::size_t> whole = ConnectionsOf(graph);
  for (const auto& [name, count] : ConnectionsOf(part)) EXPECT_EQ(count, whole.at(name)) << name;
}

TEST(Graph, CountsWhatItLeavesOut) {
  std::size_t rests = 0;
  for (unsigned seed = 0; seed < 600; ++seed) {
    SCOPED_TRACE(seed);
    Generator generator(seed);
    const Graph graph = generator.Any(seed % 2 == 0);
    const std::size_t most = 1 + generator.Below(graph.nodes.size());
    const Graph part = rux::graph::Bounded(graph, most);
    EXPECT_LE(part.nodes.size(), most);
    EXPECT_FALSE(part.nodes.empty());
    ExpectAllCounted(graph, part);
    for (const Node& node : part.nodes) rests += node.rest;
    const std::size_t center = generator.Below(graph.nodes.size());
    const Graph near = rux::graph::Around(graph, {center}, 1 + generator.Below(3));
    ExpectAllCounted(graph, near);
    const Graph both = rux::graph::Bounded(near, 1 + generator.Below(near.nodes.size()));
    ExpectAllCounted(graph, both);
    EXPECT_EQ(std::count_if(both.nodes.begin(), both.nodes.end(),
                            [&](const Node& node) {
                              return node.is_center &&
                                     node.thing.name == graph.nodes[center].thing.name;
                            }),
              1);
  }
  EXPECT_GT(rests, 1000U);
}

template <class Write>
std::string TextOf(const Graph& graph, Write write) {
  return rux::support::WrittenText([&](rux::support::TextStream& out) { write(graph, out); });
}

void ExpectSafe(const Graph& graph) {
  for (const rux::graph::Form& form : rux::graph::kForms)
    EXPECT_TRUE(rux::support::AreSafeLines(TextOf(graph, form.write))) << form.name;
}

// What only a file may have: a page has one of each.
void ExpectPartOfPage(const std::string& element) {
  for (const char* const of_a_file : {"<style", " style=", " id=", "\"heading\"", "\"paper\""})
    EXPECT_EQ(element.find(of_a_file), std::string::npos) << of_a_file;
}

TEST(Graph, IsSafeInEveryForm) {
  for (unsigned seed = 0; seed < 60; ++seed) {
    SCOPED_TRACE(seed);
    Generator generator(seed);
    const Graph graph = generator.Any(seed % 2 == 0);
    for (const Graph& part : {graph, rux::graph::Bounded(graph, 1 + generator.Below(50))}) {
      ExpectSafe(part);
      ExpectPartOfPage(TextOf(part, rux::graph::WriteSvgElement));
    }
  }
}

}  // namespace
