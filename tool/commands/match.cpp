// rux match META METAD
#include <memory>
#include <string>
#include <vector>

#include "diff/pairing.h"
#include "driver/compile_options.h"
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

struct MatchOptions {
  std::string meta;
  std::string metad;
  std::string color = "auto";
  bool json = false;
  bool quiet = false;
  std::vector<std::string> include_folders;
  settings::ProjectChoice project;
};

support::ExitStatus Match(const MatchOptions& options) {
  const diff::Pairing pairing =
      diff::PairingOf(options.meta, options.metad,
                      {options.include_folders, driver::ProjectsOf(options.project), ""});
  if (!options.quiet) {
    support::Print(support::PrintOut, [&](support::TextStream& out) {
      if (!options.json)
        return diff::WriteText(pairing, support::StyleOfOutput(options.color).uses_colour, out);
      support::WriteJson(out, [&](support::JsonObject& json) { diff::WriteMatch(pairing, json); });
    });
  }
  return pairing.belongs() ? support::ExitStatus::kDone : support::ExitStatus::kFindings;
}

}  // namespace

Action SetUpMatch(Arguments& arguments) {
  const auto options = std::make_shared<MatchOptions>();
  arguments.Add("META", &options->meta, "The meta file").File().Required();
  arguments
      .Add("METAD", &options->metad, "The debug meta file, or the script that it was made from")
      .File()
      .Required();
  AddOutputColor(arguments, options->color);
  arguments.Add("--json", &options->json, "Print JSON (docs/match.schema.json)");
  arguments.Add("-q,--quiet", &options->quiet, "Print nothing; the exit status answers")
      .Without({"--json"});
  AddSearchOptions(arguments, options->include_folders, options->project);
  arguments.Footer(
      "Both belong together when they describe the same machine, whenever they were made. Either\n"
      "may be of a git revision: REVISION:PATH. The exit status is 1 when they differ.\n\n"
      "Examples:\n"
      "  rux match server.meta server.metad\n"
      "  rux match server.meta v1.0:boards/server.rux");
  return [options] { return Match(*options); };
}

}  // namespace rux::tool
