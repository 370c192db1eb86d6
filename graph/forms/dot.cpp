#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "graph/forms.h"
#include "graph/graph.h"
#include "support/text_stream.h"

namespace rux::graph {
namespace {

// In double quotes; Graphviz reads escapes and entities there.
std::string DotText(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
    if (c == '&') quoted += "amp;";
  }
  return quoted + '"';
}

void WriteNode(const Graph& graph, std::size_t number, support::TextStream& out) {
  const Node& node = graph.nodes[number];
  std::string label = DotText(LabelOf(graph, node));
  // "\n" is an escape of Graphviz.
  if (const std::string hidden = HiddenText(node); !hidden.empty())
    label.insert(label.size() - 1, "\\n" + hidden);
  out += fmt::format("  n{} [label={}, tooltip={}, class={}{}];\n", number, label,
                     DotText(TitleOf(node)), DotText(NounOf(*node.thing.kind)),
                     node.rest > 0    ? ", style=dashed"
                     : node.is_center ? ", style=bold"
                                      : "");
}

}  // namespace

void WriteDot(const Graph& graph, support::TextStream& out) {
  const std::string left_out = LeftOutText(graph);
  out += fmt::format("digraph {} {{\n", DotText(TitleOf(graph)));
  if (!left_out.empty()) out += fmt::format("  // {}\n  label={};\n", left_out, DotText(left_out));
  out += "  rankdir=LR;\n  node [shape=box];\n";
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) WriteNode(graph, i, out);
  for (const Edge& edge : graph.edges) {
    const std::string reasons = graph.subject->is_hierarchy ? "" : ReasonsText(edge);
    out += fmt::format("  n{} -> n{}{};\n", edge.from, edge.to,
                       reasons.empty() ? "" : fmt::format(" [label={}]", DotText(reasons)));
  }
  out += "}\n";
}

}  // namespace rux::graph
