// rux decompile METAD [-o SCRIPT]
#include "decompile/decompile.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "compiled/debug_meta.h"
#include "driver/overwriting.h"
#include "support/failure.h"
#include "support/placement.h"
#include "support/terminal.h"
#include "tool/command.h"
#include "tool/pair_arguments.h"

namespace rux::tool {
namespace {

struct DecompileOptions {
  std::string debug_meta;
  std::string meta;
  std::string script;  // empty: standard output
};

void ExpectNone(const std::optional<std::string>& obstacle, const std::string& path) {
  if (!obstacle) return;
  throw support::Failure(support::ExitStatus::kFindings, "cannot decompile {}: {}", path,
                         *obstacle);
}

std::string Decompiled(const std::string& path) {
  decompile::KeptScript kept = decompile::KeptScriptOf(compiled::ReadDebugMeta(path));
  ExpectNone(decompile::GroupBeforeParent(kept.meta), path);
  ExpectNone(decompile::MisreadItem(kept), path);
  return std::move(kept.text);
}

support::ExitStatus Decompile(const DecompileOptions& options) {
  WarnUnlessPair(options.meta, options.debug_meta, {});
  if (options.script.empty()) {
    support::PrintAsIs("the script", Decompiled(options.debug_meta),
                       "give -o FILE, or redirect the output");
  } else {
    driver::RefuseToOverwrite({"debug meta file", options.debug_meta}, {"script", options.script});
    support::PutInPlace({{options.script, Decompiled(options.debug_meta)}});
  }
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpDecompile(Arguments& arguments) {
  const auto options = std::make_shared<DecompileOptions>();
  arguments.Add("METAD", &options->debug_meta, "The debug meta file to read").File().Required();
  arguments.Add("-o,--output", &options->script, "The script to write (default: standard output)")
      .File("SCRIPT");
  AddMetaOfPair(arguments, "--meta", options->meta,
                "Warn if METAD does not belong to this meta file");
  arguments.Footer(
      "The script compiles to the same meta file as the original. Its first lines list what debug\n"
      "meta files do not keep.\n\n"
      "Example:\n  rux decompile server.metad -o server.rux");
  return [options] { return Decompile(*options); };
}

}  // namespace rux::tool
