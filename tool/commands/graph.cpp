// rux graph MACHINE
#include "graph/graph.h"

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "browse/relations.h"
#include "graph/bounds.h"
#include "graph/forms.h"
#include "graph/selection.h"
#include "support/failure.h"
#include "support/standard_streams.h"
#include "support/text_stream.h"
#include "tool/command.h"
#include "tool/machine_arguments.h"
#include "tool/row_names.h"

namespace rux::tool {
namespace {

constexpr std::size_t kDefaultDepth = 2;

struct GraphOptions {
  MachineOptions machine;
  std::string of = graph::Selections().front().subject.name;
  std::string around;
  std::size_t depth = 0;  // 0: not given
  std::size_t max_nodes = 500;
  std::string format = graph::kForms[0].name;
};

graph::Graph GraphFor(const GraphOptions& options) {
  const graph::Selection& selection = *graph::FindSelection(options.of);
  const browse::Relations relations =
      selection.read(options.machine.file, LoadOptionsOf(options.machine));
  graph::Selected selected = graph::Select(selection, relations, options.machine.file);
  if (options.around.empty()) return std::move(selected.graph);
  const std::vector<std::size_t> centers = graph::FindNodes(selected, relations, options.around);
  return graph::Around(std::move(selected.graph), centers,
                       options.depth > 0 ? options.depth : kDefaultDepth);
}

support::ExitStatus PrintGraph(const GraphOptions& options) {
  if (options.depth > 0 && options.around.empty())
    throw support::Failure(support::ExitStatus::kWrongUsage, "--depth needs --around");
  const graph::Graph graph = graph::Bounded(GraphFor(options), options.max_nodes);
  support::Print(support::PrintOut, [&](support::TextStream& out) {
    for (const graph::Form& form : graph::kForms) {
      if (form.name == options.format) form.write(graph, out);
    }
  });
  if (const std::string left_out = graph::LeftOutText(graph); !left_out.empty())
    support::PrintError("rux: note: " + left_out + '\n');
  return support::ExitStatus::kDone;
}

std::vector<std::string> Subjects() {
  std::vector<std::string> names;
  for (const graph::Selection& selection : graph::Selections())
    names.emplace_back(selection.subject.name);
  return names;
}

}  // namespace

Action SetUpGraph(Arguments& arguments) {
  const auto options = std::make_shared<GraphOptions>();
  AddMachine(arguments, options->machine);
  arguments
      .Add(
          "--of", &options->of,
          "groups (default) and pelm, with their sensors; calls of actions; includes, of files; or "
          "references, what values use")
      .OneOf("WHAT", Subjects());
  arguments
      .Add("--around", &options->around,
           "Only what is near a section, global or repeater: its name, #ID or KIND/ with one of "
           "them; for includes, the path of a file")
      .Value("NAME");
  arguments
      .Add("--depth", &options->depth,
           "How many steps away from NAME (default: 2; only with --around)")
      .Value("N");
  arguments
      .Add("--max-nodes", CommandArgument::Limit{&options->max_nodes},
           "Draw at most N nodes, count the others (default: 500); 0: all")
      .Value("N");
  arguments
      .Add("--format", &options->format,
           "svg (default), dot for Graphviz, mermaid, or json (docs/graph.schema.json)")
      .OneOf("FORMAT", NamesOf(graph::kForms));
  AddSearchOptions(arguments, options->machine);
  arguments.Footer(
      "Prints one graph. What it leaves out is counted in the graph and on standard error.\n"
      "Of a meta file, the includes are not known.\n\n"
      "Examples:\n"
      "  rux graph server.rux > groups.svg\n"
      "  rux graph server.meta --of references --around CPU0_TEMP --depth 1 > cpu0.svg\n"
      "  rux graph server.rux --of includes --format dot | dot -Tpdf > files.pdf");
  return [options] { return PrintGraph(*options); };
}

}  // namespace rux::tool
