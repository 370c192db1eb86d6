// rux show MACHINE PATH
#include <memory>
#include <string>
#include <vector>

#include "browse/page.h"
#include "driver/compile_options.h"
#include "machine/load.h"
#include "machine/machine.h"
#include "settings/project.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "support/text_stream.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"
#include "tool/view_arguments.h"

namespace rux::tool {
namespace {

struct ShowOptions {
  std::string file;
  std::string path;
  std::string color = "auto";
  bool json = false;
  std::vector<std::string> include_folders;
  settings::ProjectChoice project;
};

support::ExitStatus Show(const ShowOptions& options) {
  const std::vector<machine::Machine> machines = machine::Load(
      {options.file}, {options.include_folders, driver::ProjectsOf(options.project), ""});
  const browse::Page page(machines.front(), options.path);
  support::Print(support::PrintOut, [&](support::TextStream& out) {
    if (!options.json) return page.Write(support::StyleOfOutput(options.color), out);
    support::WriteJson(out, [&](support::JsonObject& json) { page.Write(json); });
  });
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpShow(Arguments& arguments) {
  const auto options = std::make_shared<ShowOptions>();
  arguments
      .Add("MACHINE", &options->file,
           "A meta file, a debug meta file or a script; or REVISION:PATH for one of a git revision")
      .File()
      .Required();
  arguments.Add("PATH", &options->path, "KIND/SECTION, or KIND/KEY for globals and the like")
      .Required();
  AddOutputColor(arguments, options->color);
  arguments.Add("--json", &options->json, "Print JSON (docs/show.schema.json)");
  AddSearchOptions(arguments, options->include_folders, options->project);
  arguments.Footer(
      "Groups and lists that it is in, its entries with the amounts of limits, what refers to it,\n"
      "and the actions, tables and globals that its values use. SECTION is a name, #ID or\n"
      "@ordinal. Lines are known of scripts and debug meta files, units and signs where the\n"
      "project file states them.\n\n"
      "Example:\n  rux show server.metad SENSOR/CPU0_TEMP");
  return [options] { return Show(*options); };
}

}  // namespace rux::tool
