// rux where METAD PATH
#include <memory>
#include <string>
#include <vector>

#include "compiled/debug_meta.h"
#include "inspect/debug_find.h"
#include "inspect/debug_text.h"
#include "inspect/path.h"
#include "support/failure.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

struct Options {
  std::string metad;
  std::string path;
};

support::ExitStatus Where(const Options& options) {
  const std::vector<inspect::PathStep> path = inspect::ParsePath(options.path);
  const compiled::DebugMeta meta = compiled::ReadDebugMeta(options.metad);
  const inspect::SourcePlaces places(meta);
  for (const auto& [section, entry] : inspect::Find(meta, path)) {
    const compiled::DebugObject& object =
        entry != nullptr ? static_cast<const compiled::DebugObject&>(*entry) : *section;
    if (object.file_index >= meta.files.size()) {
      throw support::Failure(support::ExitStatus::kFindings,
                             "{} does not list its source files; line {} of the file {} says it",
                             options.metad, object.line, object.file_index);
    }
    const std::string text = entry != nullptr ? ' ' + inspect::EntryText(*entry) : "";
    support::PrintOut(places.Of(object) + ": [" + support::SafeText(section->name) + ']' + text +
                      '\n');
  }
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpWhere(Arguments& arguments) {
  const auto options = std::make_shared<Options>();
  arguments.Add("METAD", &options->metad, "The debug meta file to read").File().Required();
  arguments.Add("PATH", &options->path, "KIND/SECTION[/ENTRY] or WORD/NAME").Required();
  arguments.Footer(
      "SECTION is a name, #ID or @ordinal (from 0); where sections have no names, the path goes\n"
      "on with the entry: GLOBAL/G_FAN_MAX. ENTRY is the key as the script writes it, NAME that\n"
      "of a defined word. A name in double quotes is taken as it stands, \"\" in it for a quote.\n"
      "\n"
      "Example:\n  rux where server.metad SENSOR/CPU0_TEMP/THRESHOLD_FH");
  return [options] { return Where(*options); };
}

}  // namespace rux::tool
