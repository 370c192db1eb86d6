// A meta file: of what is sound, every graph can be drawn and written in all forms, in parts as
// well. Groups and lists of a damaged file may contain each other.
#include "graph/graph.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "browse/relations.h"
#include "fuzz/sound_machine.h"
#include "fuzz/target.h"
#include "graph/bounds.h"
#include "graph/forms.h"
#include "graph/selection.h"
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
  const auto machine = fuzz::SoundMachineOf(std::string(data, data + size));
  if (!machine) return 0;
  const rux::browse::MachineRelations relations(*machine);
  for (const rux::graph::Selection& selection : rux::graph::Selections()) {
    const Graph graph = rux::graph::Select(selection, relations, machine->name()).graph;
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
