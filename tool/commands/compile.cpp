// rux compile SCRIPT [-o META] [-g METAD] [--depfile FILE] [--if-changed]
#include <unistd.h>

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
#include "tool/compile/source_date.h"
#include "tool/failure.h"

namespace rux {
namespace {

struct Options {
  CompileOptions run;
  MetaOptions files;
};

std::string DefaultMeta(const std::string& script) {
  return std::filesystem::path(script).replace_extension(".meta").string();
}

// No file of the command line is written over another one.
void KeepApart(const NamedFile& script, const Options& options) {
  const std::string none;
  const std::vector<NamedFile> written = {
      {"meta file", options.files.prints_meta ? none : options.files.meta},
      {"debug meta file", options.files.debug_meta},
      {"dependency file", options.files.depfile},
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

constexpr const char* kStandardStream = "-";

Failure WrongUsage(const char* text) { return Failure(ExitStatus::kWrongUsage, text); }

void UseStandardOutput(Options& options) {
  const TellingOptions& telling = options.run.telling;
  if (telling.format != "human" && telling.file.empty()) {
    throw WrongUsage("-o - leaves no room for --format: give it a --diagnostics-file");
  }
  if (!options.files.depfile.empty() && options.files.debug_meta.empty()) {
    throw WrongUsage("--depfile needs a file that depends on others: -o - is none");
  }
  if (isatty(STDOUT_FILENO) != 0) {
    throw WrongUsage("a meta file is not for a terminal: give -o FILE, or redirect the output");
  }
  options.files.prints_meta = true;
  options.files.meta = "standard output";
}

ExitStatus Compile(Options options) {
  const std::string script = ToOpenablePath(options.run.script_name());
  if (options.files.debug_meta == kStandardStream || options.files.depfile == kStandardStream) {
    throw WrongUsage("only the meta file can be written to standard output");
  }
  if (options.run.reads_standard_input()) {
    if (options.files.meta.empty()) throw WrongUsage("a script from standard input needs -o");
    options.files.stdin_name = options.run.script_name();
  }
  if (options.files.meta.empty()) options.files.meta = DefaultMeta(script);
  if (options.files.meta == kStandardStream) UseStandardOutput(options);
  KeepApart({"script", script}, options);
  options.files.creation_time = SourceDateEpoch();
  MetaFiles product(options.files);
  return RunCompile(options.run, &product);
}

}  // namespace

Action SetUpCompile(CLI::App& app) {
  const auto options = std::make_shared<Options>();
  MetaOptions& files = options->files;
  AddCompileOptions(app, options->run);
  app.add_option(
         "-o,--output", files.meta,
         "The meta file to write (default: the script's name with .meta); - for standard output")
      ->type_name("META")
      ->check(IsFileName());
  app.add_option("-g,--debug-meta", files.debug_meta,
                 "Also write this debug meta file, for where, dump and decompile")
      ->type_name("METAD")
      ->check(IsFileName());
  app.add_option("--depfile", files.depfile,
                 "Also write a rule for make or ninja that tells which files were read")
      ->type_name("FILE")
      ->check(IsFileName());
  app.add_flag("--if-changed", files.if_changed,
               "Leave files alone that would be replaced by the same");
  app.footer("Example:\n  rux compile boards/server.rux -o server.meta -g server.metad");
  return [options] { return Compile(*options); };
}

}  // namespace rux
