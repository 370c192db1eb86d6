// rux refs MACHINE NAME
#include "browse/refs.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "browse/relations.h"
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

struct RefsOptions {
  std::string file;
  std::string name;
  std::string color = "auto";
  bool json = false;
  std::vector<std::string> include_folders;
  settings::ProjectChoice project;
};

support::ExitStatus Refs(const RefsOptions& options) {
  const browse::Relations relations = browse::ReadRelations(
      options.file, {options.include_folders, driver::ProjectsOf(options.project), ""});
  const std::vector<std::size_t> things = browse::FindThings(relations, options.name);
  support::Print(support::PrintOut, [&](support::TextStream& out) {
    if (!options.json) {
      return browse::WriteRefs(relations, things, support::StyleOfOutput(options.color).uses_colour,
                               out);
    }
    support::WriteJson(out, [&](support::JsonObject& json) {
      browse::WriteRefs(relations, things, options.file, json);
    });
  });
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpRefs(Arguments& arguments) {
  const auto options = std::make_shared<RefsOptions>();
  arguments
      .Add("MACHINE", &options->file,
           "A script, a debug meta file or a meta file; or REVISION:PATH for one of a git revision")
      .File()
      .Required();
  arguments.Add("NAME", &options->name, "A name, #ID, a word, or KIND/ with a name or #ID")
      .Required();
  AddOutputColor(arguments, options->color);
  arguments.Add("--json", &options->json, "Print JSON (docs/refs.schema.json)");
  AddSearchOptions(arguments, options->include_folders, options->project);
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
