// rux refs MACHINE NAME
#include "browse/refs.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "browse/relations.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "support/text_stream.h"
#include "tool/command.h"
#include "tool/machine_arguments.h"
#include "tool/view_arguments.h"

namespace rux::tool {
namespace {

struct RefsOptions {
  MachineOptions machine;
  std::string name;
  std::string color = "auto";
  bool json = false;
};

support::ExitStatus Refs(const RefsOptions& options) {
  const browse::Relations relations =
      browse::ReadRelations(options.machine.file, LoadOptionsOf(options.machine));
  const std::vector<std::size_t> things = browse::FindThings(relations, options.name);
  support::Print(support::PrintOut, [&](support::TextStream& out) {
    if (!options.json) {
      return browse::WriteRefs(relations, things, support::StyleOfOutput(options.color).uses_colour,
                               out);
    }
    support::WriteJson(out, [&](support::JsonObject& json) {
      browse::WriteRefs(relations, things, options.machine.file, json);
    });
  });
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpRefs(Arguments& arguments) {
  const auto options = std::make_shared<RefsOptions>();
  AddMachine(arguments, options->machine);
  arguments.Add("NAME", &options->name, "A name, #ID, a word, or KIND/ with a name or #ID")
      .Required();
  AddOutputColor(arguments, options->color);
  arguments.Add("--json", &options->json, "Print JSON (docs/refs.schema.json)");
  AddSearchOptions(arguments, options->machine);
  arguments.Footer(
      "NAME is that of a section, a global, a repeater or a defined word. Meta files have neither\n"
      "words nor lines. Several things of one name are listed one after the other.\n\n"
      "Examples:\n"
      "  rux refs server.rux G_CPU0_TEMP\n"
      "  rux refs server.metad '#0x101'\n"
      "  rux refs server.meta ACTION/SET_FAN");
  return [options] { return Refs(*options); };
}

}  // namespace rux::tool
