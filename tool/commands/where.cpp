// rux where METAD PATH
#include "inspect/where.h"

#include <memory>
#include <string>
#include <vector>

#include "compiled/debug_meta.h"
#include "inspect/debug_find.h"
#include "inspect/path.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "tool/command.h"
#include "tool/pair_arguments.h"
#include "tool/view_arguments.h"

namespace rux::tool {
namespace {

struct WhereOptions {
  std::string metad;
  std::string path;
  std::string meta;
  std::string color = "auto";
  bool json = false;
};

support::ExitStatus Where(const WhereOptions& options) {
  const std::vector<inspect::PathStep> path = inspect::ParsePath(options.path);
  WarnUnlessPair(options.meta, options.metad, {});
  const compiled::DebugMeta meta = compiled::ReadDebugMeta(options.metad);
  const std::vector<inspect::DebugFound> places = inspect::FindPlaces(options.metad, meta, path);
  const auto write = [&](support::JsonObject& json) {
    inspect::WritePlaces(json, options.metad, meta, places);
  };
  support::PrintOut(options.json
                        ? support::JsonDocument(write)
                        : inspect::PlacesText(meta, places, support::StyleOfOutput(options.color)));
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpWhere(Arguments& arguments) {
  const auto options = std::make_shared<WhereOptions>();
  arguments.Add("METAD", &options->metad, "The debug meta file to read; - for standard input")
      .File()
      .Required();
  arguments.Add("PATH", &options->path, "KIND[/SECTION[/ENTRY]] or WORD[/NAME]").Required();
  AddMetaOfPair(arguments, "--meta", options->meta,
                "Warn if METAD does not belong to this meta file");
  AddOutputColor(arguments, options->color);
  arguments.Add("--json", &options->json, "Print JSON (docs/where.schema.json)");
  arguments.Footer(
      "SECTION is a name, #ID or @ordinal (from 0); where sections have no names, the entry\n"
      "follows directly: GLOBAL/G_FAN_MAX. ENTRY is the key as the script writes it, NAME that\n"
      "of a defined word. A name in double quotes is taken literally; \"\" in it is one quote. A\n"
      "KIND alone lists its sections, and WORD the defined words.\n\n"
      "Examples:\n  rux where server.metad SENSOR/CPU0_TEMP/THRESHOLD_FH\n"
      "  rux where server.metad WORD/VT_READ");
  return [options] { return Where(*options); };
}

}  // namespace rux::tool
