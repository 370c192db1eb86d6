#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "graph/forms.h"
#include "graph/graph.h"
#include "support/ascii.h"
#include "support/text_stream.h"

namespace rux::graph {
namespace {

// In double quotes. What could mean anything to Mermaid, Markdown or HTML is an entity code.
std::string MermaidText(std::string_view text) {
  constexpr std::string_view kPlain = " _-+.,:/()=";
  std::string quoted = "\"";
  for (const char c : text) {
    const bool is_ascii = static_cast<unsigned char>(c) < 0x80;
    const bool is_plain =
        !is_ascii || support::IsLetterOrDigit(c) || kPlain.find(c) != std::string_view::npos;
    quoted += is_plain ? std::string(1, c) : fmt::format("#{};", static_cast<int>(c));
  }
  return quoted + '"';
}

}  // namespace

void WriteMermaid(const Graph& graph, support::TextStream& out) {
  out += "flowchart LR\n";
  if (const std::string left_out = LeftOutText(graph); !left_out.empty())
    out += fmt::format("  %% {}\n", left_out);
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    const Node& node = graph.nodes[i];
    const std::string hidden = HiddenText(node);
    out += fmt::format("  n{}[{}]\n", i,
                       MermaidText(LabelOf(graph, node) + (hidden.empty() ? "" : " " + hidden)));
  }
  for (const Edge& edge : graph.edges) {
    const std::string reasons = graph.subject->is_hierarchy ? "" : ReasonsText(edge);
    out += fmt::format("  n{} -->{} n{}\n", edge.from,
                       reasons.empty() ? "" : fmt::format("|{}|", MermaidText(reasons)), edge.to);
  }
}

}  // namespace rux::graph
