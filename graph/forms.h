// The forms in which a graph is printed.
#ifndef GRAPH_FORMS_H_
#define GRAPH_FORMS_H_

#include "graph/graph.h"
#include "support/text_stream.h"

namespace rux::graph {

// A picture that needs no other file: forms/svg.h.
void WriteSvg(const Graph& graph, support::TextStream& out);
// For Graphviz.
void WriteDot(const Graph& graph, support::TextStream& out);
void WriteMermaid(const Graph& graph, support::TextStream& out);
// docs/graph.schema.json
void WriteJson(const Graph& graph, support::TextStream& out);

struct Form {
  const char* name;
  void (*write)(const Graph& graph, support::TextStream& out);
};
inline constexpr Form kForms[] = {
    {"svg", WriteSvg}, {"dot", WriteDot}, {"mermaid", WriteMermaid}, {"json", WriteJson}};

}  // namespace rux::graph

#endif  // GRAPH_FORMS_H_
