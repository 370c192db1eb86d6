// The graphs that there are.
#ifndef GRAPH_SELECTION_H_
#define GRAPH_SELECTION_H_

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "browse/relations.h"
#include "graph/graph.h"
#include "machine/load.h"
#include "ruxcomp/language/sections.h"

namespace rux::graph {

// A graph that commands offer: a choice of things and links of the compiled machine, or of its
// files.
struct Selection {
  Subject subject;
  // Whether things of a kind are in the graph also when nothing is connected to them.
  bool (*is_whole)(language::SectionId kind);
  bool (*takes)(const browse::Thing& from, const browse::Thing& to, bool is_membership);
  // What the graph is of. Throws a Failure for a machine that cannot be read, or has nothing of it.
  browse::Relations (*read)(const std::string& machine, const machine::LoadOptions& options);
};

// The first is the one to show when none is asked for.
const std::vector<Selection>& Selections();

// Null if there is none of that name.
const Selection* FindSelection(const std::string& name);

// A graph, and which of its nodes each thing of the relations is; none: the graph does not have it.
struct Selected {
  Graph graph;
  std::vector<std::optional<std::size_t>> nodes;
};
Selected Select(const Selection& selection, const browse::Relations& relations,
                const std::string& machine);

// The nodes that a query names: as rux refs takes it or, of files, a path. Throws a Failure when
// there are none.
std::vector<std::size_t> FindNodes(const Selected& selected, const browse::Relations& relations,
                                   const std::string& query);

}  // namespace rux::graph

#endif  // GRAPH_SELECTION_H_
