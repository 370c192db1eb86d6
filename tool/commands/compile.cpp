// rux compile SCRIPT... [-o META] [-g METAD] [--depfile FILE] [--if-changed]
#include <unistd.h>

#include <cstddef>
#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "driver/compile_run.h"
#include "driver/meta_files.h"
#include "driver/overwriting.h"
#include "driver/scripts.h"
#include "driver/source_date.h"
#include "sources/script_path.h"
#include "support/failure.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"

namespace rux {
namespace {

struct Options {
  CompileOptions run;
  MetaOptions files;
};

std::string DefaultMeta(const std::string& script) {
  return std::filesystem::path(script).replace_extension(".meta").string();
}

// The files that a script has written.
std::vector<NamedFile> WrittenFor(const Options& options) {
  const MetaOptions& files = options.files;
  std::vector<NamedFile> written;
  if (!files.prints_meta) written.push_back({"meta file", files.meta});
  if (!files.debug_meta.empty()) written.push_back({"debug meta file", files.debug_meta});
  if (!files.depfile.empty()) written.push_back({"dependency file", files.depfile});
  const std::string& told = options.run.telling.file;
  if (!told.empty()) written.push_back({"diagnostics file", told});
  return written;
}

void KeepApart(const NamedFile& script, const std::vector<NamedFile>& written) {
  for (std::size_t i = 0; i < written.size(); ++i) {
    RefuseToOverwrite(script, written[i]);
    for (std::size_t j = 0; j < i; ++j) RefuseToOverwrite(written[j], written[i]);
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

// The options for one script out of those for all.
Options OptionsFor(const CompileOptions& run, const MetaOptions& all_files) {
  Options options{run, all_files};
  MetaOptions& files = options.files;
  const std::string script = run.script_name();
  for (std::string* name : {&files.meta, &files.debug_meta, &files.depfile}) {
    *name = NameFor(script, *name);
  }
  if (files.debug_meta == kStandardStream || files.depfile == kStandardStream) {
    throw WrongUsage("only the meta file can be written to standard output");
  }
  if (run.reads_standard_input()) {
    if (files.meta.empty()) throw WrongUsage("a script from standard input needs -o");
    files.stdin_name = script;
  }
  if (files.meta.empty()) files.meta = DefaultMeta(ToOpenablePath(script));
  if (files.meta == kStandardStream) UseStandardOutput(options);
  files.creation_time = SourceDateEpoch();
  return options;
}

ExitStatus Compile(const Options& options) {
  const std::string script = ToOpenablePath(options.run.script_name());
  KeepApart({"script", script}, WrittenFor(options));
  MetaFiles product(options.files);
  return RunCompile(options.run, &product);
}

// No script has a file written that is another one's.
void KeepScriptsApart(const std::vector<CompileOptions>& runs, const MetaOptions& all_files) {
  std::deque<Options> each;
  std::deque<std::string> scripts;
  std::vector<NamedFile> kept;
  std::vector<NamedFile> written;
  for (const CompileOptions& run : runs) {
    const Options& options = each.emplace_back(OptionsFor(run, all_files));
    for (const NamedFile& file : WrittenFor(options)) written.push_back(file);
    kept.push_back({"script", scripts.emplace_back(ToOpenablePath(run.script_name()))});
  }
  RefuseToWriteTwice(kept, written);
}

ExitStatus CompileAll(const Options& all) {
  ExpectNameForEach(all.run, "--output", all.files.meta);
  ExpectNameForEach(all.run, "--debug-meta", all.files.debug_meta);
  ExpectNameForEach(all.run, "--depfile", all.files.depfile);
  const std::vector<CompileOptions> runs = RunsOf(all.run);
  if (runs.size() > 1) KeepScriptsApart(runs, all.files);
  return RunAll(runs,
                [&](const CompileOptions& run) { return Compile(OptionsFor(run, all.files)); });
}

}  // namespace

Action SetUpCompile(Arguments& arguments) {
  const auto options = std::make_shared<Options>();
  MetaOptions& files = options->files;
  AddCompileOptions(arguments, options->run);
  arguments
      .Add("-o,--output", &files.meta,
           "The meta file to write (default: the script's name with .meta); - for standard output")
      .File("META");
  arguments
      .Add("-g,--debug-meta", &files.debug_meta,
           "Also write this debug meta file, for where, dump and decompile")
      .File("METAD");
  arguments
      .Add("--depfile", &files.depfile,
           "Also write a rule for make or ninja that tells which files were read")
      .File("FILE");
  arguments.Add("--if-changed", &files.if_changed,
                "Leave files alone that would be replaced by the same");
  arguments.Footer(
      "In the names of files to write, {} stands for that of the script.\n\n"
      "Examples:\n  rux compile boards/server.rux -o server.meta -g server.metad\n"
      "  rux compile -j 4 boards/*.rux -o 'out/{}.meta'");
  return [options] { return CompileAll(*options); };
}

}  // namespace rux
