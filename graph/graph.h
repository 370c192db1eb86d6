// A graph of a machine: what is in what, or what uses what.
#ifndef GRAPH_GRAPH_H_
#define GRAPH_GRAPH_H_

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "browse/relations.h"
#include "machine/place.h"
#include "ruxcomp/language/sections.h"

namespace rux::graph {

namespace language = ruxcomp::language;

// How many things there are of each kind, in the order of the kinds.
using Counts = std::map<const language::SectionKind*, std::size_t>;

// A thing; or, if `rest` is not 0, that many more of its kind, which are connected alike. Of those,
// only the kind is known. A file is a thing of the kind INCLUDE whose name is its path.
struct Node {
  browse::Thing thing;
  std::size_t rest = 0;
  bool is_center = false;  // the graph shows what is around it
  Counts hidden = {};      // what the graph leaves out of the things that it is connected to

  std::size_t count() const { return rest > 0 ? rest : 1; }
};

bool IsFile(const browse::Thing& thing);

// An entry because of which two things are connected.
struct Reason {
  std::string key;
  std::optional<machine::Place> place;
};

// From a user to what it uses; from what contains others to each of them. Nodes are given by their
// numbers, and no two edges have the same ends.
struct Edge {
  std::size_t from;
  std::size_t to;
  std::vector<Reason> reasons;  // at least one
};

// What a graph is of.
struct Subject {
  const char* name;   // "groups"
  const char* about;  // in a few words
  bool is_hierarchy;  // edges lead to what is contained
};

struct Graph {
  std::string machine;  // as the user called it
  const Subject* subject;
  std::vector<Node> nodes;
  std::vector<Edge> edges;
  Counts left_out = {};
};

// What a node is called in a picture: a NAME, a key, an ID; the path of a file from the folder of
// the machine; "+12 sensors".
std::string LabelOf(const Graph& graph, const Node& node);
// All that it is: "SENSOR #0x101 INLET".
std::string TitleOf(const Node& node);
// What is hidden around a node: "+12 sensors"; empty if nothing is.
std::string HiddenText(const Node& node);
// "INIT, VALUE"
std::string ReasonsText(const Edge& edge);

// "board.rux: groups and sensors"
std::string TitleOf(const Graph& graph);
// "left out: 12 groups, 340 sensors"; empty if nothing is.
std::string LeftOutText(const Graph& graph);
// "sensor", "file"
std::string NounOf(const language::SectionKind& kind);

// The ends of the edges at each node.
struct Neighbours {
  explicit Neighbours(const Graph& graph);

  std::vector<std::vector<std::size_t>> to;    // by the node that an edge leads from
  std::vector<std::vector<std::size_t>> from;  // by the node that it leads to
};

}  // namespace rux::graph

#endif  // GRAPH_GRAPH_H_
