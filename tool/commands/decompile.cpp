// rux decompile METAD [-o SCRIPT]
#include "decompile/decompile.h"

#include <unistd.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "compiled/debug_meta.h"
#include "driver/overwriting.h"
#include "support/failure.h"
#include "support/placement.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

struct Options {
  std::string debug_meta;
  std::string script;  // empty: standard output
};

void ExpectNone(const std::optional<std::string>& obstacle, const std::string& path) {
  if (!obstacle) return;
  throw support::Failure(support::ExitStatus::kFindings, "cannot decompile {}: {}", path,
                         *obstacle);
}

std::string Decompiled(const std::string& path) {
  const compiled::DebugMeta meta = compiled::ReadDebugMeta(path);
  ExpectNone(decompile::GroupBeforeParent(meta), path);
  const std::vector<decompile::ScriptSection> sections = decompile::ScriptSectionsOf(meta);
  std::string text = decompile::ScriptText(sections);
  ExpectNone(decompile::MisreadItem(meta, sections, text), path);
  return text;
}

// A script is printed as it is, and what it holds could steer the terminal.
void PrintScript(const std::string& script) {
  if (isatty(STDOUT_FILENO) != 0 && !support::AreSafeLines(script)) {
    throw support::Failure(support::ExitStatus::kWrongUsage,
                           "the script has characters that could control a terminal: give -o FILE, "
                           "or redirect the output");
  }
  support::PrintOut(script);
}

support::ExitStatus Decompile(const Options& options) {
  if (options.script.empty()) {
    PrintScript(Decompiled(options.debug_meta));
  } else {
    driver::RefuseToOverwrite({"debug meta file", options.debug_meta}, {"script", options.script});
    support::PutInPlace({{options.script, Decompiled(options.debug_meta)}});
  }
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpDecompile(Arguments& arguments) {
  const auto options = std::make_shared<Options>();
  arguments.Add("METAD", &options->debug_meta, "The debug meta file to read").File().Required();
  arguments.Add("-o,--output", &options->script, "The script to write (default: standard output)")
      .File("SCRIPT");
  arguments.Footer(
      "The script compiles to the same meta file as the script that the debug meta file was\n"
      "made from. Its first lines list what debug meta files do not keep.\n\n"
      "Example:\n  rux decompile server.metad -o server.rux");
  return [options] { return Decompile(*options); };
}

}  // namespace rux::tool
