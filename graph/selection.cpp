#include "graph/selection.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "browse/refs.h"
#include "browse/relations.h"
#include "graph/graph.h"
#include "graph/includes.h"
#include "machine/load.h"
#include "ruxcomp/language/sections.h"
#include "support/failure.h"
#include "support/safe_text.h"

namespace rux::graph {
namespace {

using browse::Thing;

bool Is(const Thing& thing, language::SectionId kind) { return thing.kind->source == kind; }

// PARENT and PID are in what is contained, SENSORS are in what contains.
bool NamesContainer(const Thing& to) { return !Is(to, language::SECTION_SENSOR); }

browse::Relations ReadCompiled(const std::string& machine, const machine::LoadOptions& options) {
  return browse::MachineRelations(machine::Load({machine}, options).front());
}

class Selector {
 public:
  Selector(const Selection& selection, const browse::Relations& relations)
      : selection_(selection), relations_(relations), is_node_(relations.things().size()) {}

  Selected Run(const std::string& machine) {
    Selected selected{{machine, &selection_.subject, {}, {}}, {}};
    ForEachLink([&](const browse::Link& link) { is_node_[link.from] = is_node_[link.to] = true; });
    AddNodes(selected);
    ForEachLink([&](const browse::Link& link) {
      std::size_t from = *selected.nodes[link.from];
      std::size_t to = *selected.nodes[link.to];
      const bool is_to_container =
          link.is_membership && NamesContainer(relations_.things()[link.to]);
      if (is_to_container) std::swap(from, to);
      AddEdge(from, to, link, selected.graph);
    });
    return selected;
  }

 private:
  template <class Use>
  void ForEachLink(Use use) const {
    for (std::size_t thing = 0; thing < relations_.things().size(); ++thing) {
      for (const browse::Link* link : relations_.From(thing)) {
        const Thing& from = relations_.things()[link->from];
        const Thing& to = relations_.things()[link->to];
        if (selection_.takes(from, to, link->is_membership)) use(*link);
      }
    }
  }

  void AddNodes(Selected& selected) const {
    for (std::size_t i = 0; i < relations_.things().size(); ++i) {
      const Thing& thing = relations_.things()[i];
      selected.nodes.emplace_back();
      if (!is_node_[i] && !selection_.is_whole(thing.kind->source)) continue;
      selected.nodes.back() = selected.graph.nodes.size();
      selected.graph.nodes.push_back({thing});
    }
  }

  void AddEdge(std::size_t from, std::size_t to, const browse::Link& link, Graph& graph) {
    const auto [place, is_new] = edges_.emplace(std::pair(from, to), graph.edges.size());
    if (is_new) graph.edges.push_back({from, to, {}});
    graph.edges[place->second].reasons.push_back({link.key, link.place});
  }

  const Selection& selection_;
  const browse::Relations& relations_;
  std::vector<bool> is_node_;  // by things
  std::map<std::pair<std::size_t, std::size_t>, std::size_t> edges_;
};

}  // namespace

const std::vector<Selection>& Selections() {
  static const std::vector<Selection> selections = {
      {{"groups", "groups and sensors", true},
       [](language::SectionId kind) {
         return kind == language::SECTION_GROUP || kind == language::SECTION_SENSOR;
       },
       [](const Thing&, const Thing& to, bool is_membership) {
         return is_membership && Is(to, language::SECTION_GROUP);
       },
       ReadCompiled},
      {{"pelm", "PELMGROUPs and sensors", true},
       [](language::SectionId kind) {
         return kind == language::SECTION_PELMGROUP || kind == language::SECTION_SENSOR;
       },
       [](const Thing& from, const Thing&, bool is_membership) {
         return is_membership && Is(from, language::SECTION_PELMGROUP);
       },
       ReadCompiled},
      {{"calls", "calls of actions", false},
       [](language::SectionId kind) { return kind == language::SECTION_ACTION; },
       [](const Thing&, const Thing& to, bool) { return Is(to, language::SECTION_ACTION); },
       ReadCompiled},
      {{"includes", "included files", true},
       [](language::SectionId) { return true; },
       [](const Thing&, const Thing&, bool) { return true; },
       ReadIncludes},
      {{"references", "what values use", false},
       [](language::SectionId) { return false; },
       [](const Thing&, const Thing&, bool is_membership) { return !is_membership; },
       ReadCompiled},
  };
  return selections;
}

const Selection* FindSelection(const std::string& name) {
  for (const Selection& selection : Selections()) {
    if (selection.subject.name == name) return &selection;
  }
  return nullptr;
}

Selected Select(const Selection& selection, const browse::Relations& relations,
                const std::string& machine) {
  return Selector(selection, relations).Run(machine);
}

std::vector<std::size_t> FindNodes(const Selected& selected, const browse::Relations& relations,
                                   const std::string& query) {
  const bool is_path = !relations.things().empty() && IsFile(relations.things().front());
  std::vector<std::size_t> nodes;
  for (const std::size_t thing :
       browse::FindThings(relations, is_path ? support::NameInPath(query) : query)) {
    if (selected.nodes[thing]) nodes.push_back(*selected.nodes[thing]);
  }
  if (nodes.empty()) {
    throw support::Failure(support::ExitStatus::kFindings, "{} is not in the graph of {}", query,
                           selected.graph.subject->name);
  }
  return nodes;
}

}  // namespace rux::graph
