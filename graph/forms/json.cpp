#include "support/json.h"

#include "browse/relations.h"
#include "graph/forms.h"
#include "graph/graph.h"
#include "machine/place.h"
#include "support/text_stream.h"

namespace rux::graph {
namespace {

void WriteCounts(const char* key, const Counts& counts, support::JsonObject& json) {
  json.Objects(key, counts, [](support::JsonObject& object, const Counts::value_type& count) {
    object.Member("kind", count.first->keyword);
    object.Member("count", count.second);
  });
}

void WriteNode(const Node& node, support::JsonObject& json) {
  browse::WriteThing(json, node.thing);
  if (node.rest > 0) json.Member("rest", node.rest);
  if (node.is_center) json.Member("center", true);
  if (!node.hidden.empty()) WriteCounts("hidden", node.hidden, json);
}

void WriteEdge(const Edge& edge, support::JsonObject& json) {
  json.Member("from", edge.from);
  json.Member("to", edge.to);
  json.Objects("reasons", edge.reasons, [](support::JsonObject& object, const Reason& reason) {
    object.Member("entry", reason.key);
    machine::WritePlace(object, reason.place);
  });
}

}  // namespace

void WriteJson(const Graph& graph, support::TextStream& out) {
  support::WriteJson(out, [&](support::JsonObject& json) {
    json.Schema(1);
    json.Member("file", graph.machine);
    json.Member("of", graph.subject->name);
    WriteCounts("left_out", graph.left_out, json);
    json.Objects("nodes", graph.nodes,
                 [](support::JsonObject& object, const Node& node) { WriteNode(node, object); });
    json.Objects("edges", graph.edges,
                 [](support::JsonObject& object, const Edge& edge) { WriteEdge(edge, object); });
  });
}

}  // namespace rux::graph
