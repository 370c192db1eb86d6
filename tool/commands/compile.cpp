// rux compile SCRIPT [-o META] [-g METAD] [--depfile FILE]
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tool/command.h"
#include "tool/compile/compile_run.h"
#include "tool/compile/meta_files.h"
#include "tool/compile/overwriting.h"
#include "tool/compile/script_path.h"

namespace rux {
namespace {

struct Options {
  CompileOptions run;
  MetaPaths paths;
};

std::string DefaultMeta(const std::string& script) {
  return std::filesystem::path(script).replace_extension(".meta").string();
}

// No file of the command line is written over another one.
void KeepApart(const NamedFile& script, const Options& options) {
  const std::vector<NamedFile> written = {
      {"meta file", options.paths.meta},
      {"debug meta file", options.paths.debug_meta},
      {"dependency file", options.paths.depfile},
      {"diagnostics file", options.run.telling.file},
  };
  for (std::size_t i = 0; i < written.size(); ++i) {
    if (written[i].path.empty()) continue;
    RefuseToOverwrite(script, written[i]);
    for (std::size_t j = 0; j < i; ++j) {
      if (!written[j].path.empty()) RefuseToOverwrite(written[j], written[i]);
    }
  }
}

ExitStatus Compile(Options options) {
  const std::string script = ToOpenablePath(ToLibraryPath(options.run.script));
  if (options.paths.meta.empty()) options.paths.meta = DefaultMeta(script);
  KeepApart({"script", script}, options);
  MetaFiles files(options.paths);
  return RunCompile(options.run, &files);
}

}  // namespace

Action SetUpCompile(CLI::App& app) {
  const auto options = std::make_shared<Options>();
  MetaPaths& paths = options->paths;
  AddCompileOptions(app, options->run);
  app.add_option("-o,--output", paths.meta,
                 "The meta file to write (default: the script's name with .meta)")
      ->type_name("META")
      ->check(IsFileName());
  app.add_option("-g,--debug-meta", paths.debug_meta,
                 "Also write this debug meta file, for where, dump and decompile")
      ->type_name("METAD")
      ->check(IsFileName());
  app.add_option("--depfile", paths.depfile,
                 "Also write a rule for make or ninja that tells which files were read")
      ->type_name("FILE")
      ->check(IsFileName());
  app.footer("Example:\n  rux compile boards/server.rux -o server.meta -g server.metad");
  return [options] { return Compile(*options); };
}

}  // namespace rux
