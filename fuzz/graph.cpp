// A meta file: of what is sound, every graph can be drawn and written in all forms, in parts as
// well. Groups and lists of a damaged file may contain each other.
#include "graph/graph.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "browse/relations.h"
#include "fuzz/target.h"
#include "graph/bounds.h"
#include "graph/forms.h"
#include "graph/selection.h"
#include "machine/machine.h"
#include "ruxcomp/file/kept_bytes.h"
#include "ruxcomp/model.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace {

using fuzz::Expect;
using rux::graph::Graph;

void WriteAll(const Graph& graph) {
  for (const rux::graph::Form& form : rux::graph::kForms) {
    const std::string text =
        rux::support::WrittenText([&](rux::support::TextStream& out) { form.write(graph, out); });
    Expect(rux::support::AreSafeLines(text), "no text of a machine controls a terminal");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string bytes(data, data + size);
  if (!ruxcomp::Model::OpenBytes(bytes)) return 0;
  auto kept = std::make_unique<ruxcomp::file::KeptBytes>();
  kept->Keep(std::move(bytes));
  const rux::machine::Machine machine("file.meta", {"file.meta"}, std::move(kept), nullptr,
                                      nullptr);
  const rux::browse::MachineRelations relations(machine);
  for (const rux::graph::Selection& selection : rux::graph::Selections()) {
    const Graph graph = rux::graph::Select(selection, relations, machine.name()).graph;
    WriteAll(graph);
    if (graph.nodes.empty()) continue;
    constexpr std::size_t kFew = 5;
    const Graph few = rux::graph::Bounded(graph, kFew);
    Expect(!few.nodes.empty() && few.nodes.size() <= kFew, "a part has as many nodes as it may");
    WriteAll(few);
    WriteAll(rux::graph::Around(graph, {graph.nodes.size() / 2}, 1));
  }
  return 0;
}
