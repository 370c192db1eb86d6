// A graph as a picture.
#ifndef GRAPH_FORMS_SVG_H_
#define GRAPH_FORMS_SVG_H_

#include <string>

#include "graph/graph.h"
#include "support/text_stream.h"

namespace rux::graph {

// An <svg> element for a page whose style has SvgStyle(): it has neither a style nor a script of
// its own, and no ids. Nodes are groups of the class "node" and the noun of their kind, with the
// path that other commands take in data-path.
void WriteSvgElement(const Graph& graph, support::TextStream& out);

// The rules of CSS that these elements need, for light and dark pages. All are about what is inside
// of .rux-graph.
std::string SvgStyle();

}  // namespace rux::graph

#endif  // GRAPH_FORMS_SVG_H_
