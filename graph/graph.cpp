#include "graph/graph.h"

#include <algorithm>
#include <string>

#include "ruxcomp/language/sections.h"
#include "support/ascii.h"
#include "support/number_text.h"
#include "support/safe_text.h"

namespace rux::graph {
namespace {

std::string ListOf(const Counts& counts, const char* lead) {
  std::string text;
  for (const auto& [kind, count] : counts) {
    if (!text.empty()) text += ", ";
    text += lead + support::CountText(count, NounOf(*kind));
  }
  return text;
}

std::string RestText(const Node& node) {
  return "+" + support::CountText(node.rest, NounOf(*node.thing.kind));
}

}  // namespace

bool IsFile(const browse::Thing& thing) { return thing.kind->source == language::SECTION_INCLUDE; }

std::string NounOf(const language::SectionKind& kind) {
  if (kind.source == language::SECTION_INCLUDE) return "file";
  std::string noun = kind.keyword;
  std::transform(noun.begin(), noun.end(), noun.begin(), support::ToLower);
  return noun;
}

std::string LabelOf(const Graph& graph, const Node& node) {
  const browse::Thing& thing = node.thing;
  if (node.rest > 0) return RestText(node);
  if (!thing.key.empty()) return support::SafeText(thing.key);
  if (IsFile(thing)) {
    const std::string folder = graph.machine.substr(0, graph.machine.rfind('/') + 1);
    const bool is_inside = thing.name->compare(0, folder.size(), folder) == 0;
    return support::SafeText(thing.name->substr(is_inside ? folder.size() : 0));
  }
  if (thing.name) return support::SafeText(*thing.name);
  if (thing.id) return support::IdText(*thing.id);
  return thing.kind->keyword;
}

std::string TitleOf(const Node& node) {
  if (node.rest > 0) return RestText(node);
  return IsFile(node.thing) ? support::SafeText(*node.thing.name) : node.thing.Title();
}

std::string HiddenText(const Node& node) { return ListOf(node.hidden, "+"); }

std::string ReasonsText(const Edge& edge) {
  std::string text;
  for (const Reason& reason : edge.reasons)
    text += (text.empty() ? "" : ", ") + support::SafeText(reason.key);
  return support::Shortened(text);
}

std::string TitleOf(const Graph& graph) {
  return support::SafePath(graph.machine) + ": " + graph.subject->about;
}

std::string LeftOutText(const Graph& graph) {
  return graph.left_out.empty() ? "" : "left out: " + ListOf(graph.left_out, "");
}

Neighbours::Neighbours(const Graph& graph) : to(graph.nodes.size()), from(graph.nodes.size()) {
  for (const Edge& edge : graph.edges) {
    to[edge.from].push_back(edge.to);
    from[edge.to].push_back(edge.from);
  }
}

}  // namespace rux::graph
