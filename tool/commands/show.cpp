// rux show MACHINE PATH
#include <memory>
#include <string>

#include "browse/overview.h"
#include "machine/machine.h"
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

struct ShowOptions {
  MachineOptions machine;
  std::string path;
  std::string color = "auto";
  bool json = false;
};

support::ExitStatus Show(const ShowOptions& options) {
  const machine::Machine machine = LoadMachine(options.machine);
  const browse::Overview overview(machine, options.path);
  support::Print(support::PrintOut, [&](support::TextStream& out) {
    if (!options.json) return overview.Write(support::StyleOfOutput(options.color), out);
    support::WriteJson(out, [&](support::JsonObject& json) { overview.Write(json); });
  });
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpShow(Arguments& arguments) {
  const auto options = std::make_shared<ShowOptions>();
  AddMachine(arguments, options->machine);
  arguments.Add("PATH", &options->path, "KIND/SECTION, or KIND/KEY for globals and the like")
      .Required();
  AddOutputColor(arguments, options->color);
  arguments.Add("--json", &options->json, "Print JSON (docs/show.schema.json)");
  AddSearchOptions(arguments, options->machine);
  arguments.Footer(
      "Groups and lists that it is in, its entries with the amounts of limits, what refers to it,\n"
      "and the actions, tables and globals that its values use. SECTION is a name, #ID or\n"
      "@ordinal. Lines are known of scripts and debug meta files, units and signs where the\n"
      "project file states them.\n\n"
      "Example:\n  rux show server.metad SENSOR/CPU0_TEMP");
  return [options] { return Show(*options); };
}

}  // namespace rux::tool
