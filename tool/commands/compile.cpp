// rux compile SCRIPT... [-o META] [-g METAD] [--depfile FILE] [--if-changed]
#include <unistd.h>

#include <cstddef>
#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "diagnostics/report.h"
#include "driver/baseline.h"
#include "driver/compile_options.h"
#include "driver/compile_run.h"
#include "driver/meta_files.h"
#include "driver/output_names.h"
#include "driver/overwriting.h"
#include "driver/script_list.h"
#include "sources/source_file.h"
#include "support/failure.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"

namespace rux::tool {
namespace {

struct CompileOptions {
  driver::CompileOptions run;
  driver::MetaOptions files;
  std::string folder;  // of these files, with folders below it for those of the scripts; or empty

  std::vector<std::string*> names() { return {&files.meta, &files.debug_meta, &files.depfile}; }
};

std::string DefaultMeta(const std::string& script) {
  return std::filesystem::path(script).replace_extension(".meta").string();
}

// The files that a script has written. `script`: its path when there are others.
std::vector<driver::NamedFile> WrittenFor(const CompileOptions& options,
                                          const std::string* script = nullptr) {
  const driver::MetaOptions& files = options.files;
  std::vector<driver::NamedFile> written;
  if (!files.prints_meta) written.push_back({"meta file", files.meta, script});
  if (!files.debug_meta.empty()) written.push_back({"debug meta file", files.debug_meta, script});
  if (!files.depfile.empty()) written.push_back({"dependency file", files.depfile, script});
  const diagnostics::ReportOptions& reporting = options.run.reporting;
  const bool has_diagnostics = !reporting.file.empty() && !reporting.is_piece;
  if (has_diagnostics) written.push_back({"diagnostics file", reporting.file, script});
  return written;
}

void KeepApart(const driver::NamedFile& script, const std::vector<driver::NamedFile>& written) {
  for (std::size_t i = 0; i < written.size(); ++i) {
    driver::RefuseToOverwrite(script, written[i]);
    for (std::size_t j = 0; j < i; ++j) driver::RefuseToOverwrite(written[j], written[i]);
  }
}

constexpr const char* kStandardStream = "-";

support::Failure WrongUsage(const char* text) {
  return support::Failure(support::ExitStatus::kWrongUsage, "{}", text);
}

void UseStandardOutput(CompileOptions& options) {
  const diagnostics::ReportOptions& reporting = options.run.reporting;
  if (reporting.format != "human" && reporting.file.empty()) {
    throw WrongUsage("-o - and --format cannot share standard output: give a --diagnostics-file");
  }
  if (!options.files.depfile.empty() && options.files.debug_meta.empty()) {
    throw WrongUsage("--depfile needs an output file: -o - has none");
  }
  if (isatty(STDOUT_FILENO) != 0) {
    throw WrongUsage(
        "cannot write a meta file to a terminal: give -o FILE, or redirect the output");
  }
  options.files.prints_meta = true;
  options.files.meta = "standard output";
}

// Lets the names begin with the folder that all of them are to be in.
void UseFolder(CompileOptions& all) {
  if (all.folder.empty()) return;
  const bool has_name = !all.run.reads_standard_input() || !all.run.stdin_name.empty();
  if (all.files.meta.empty() && has_name) all.files.meta = "{}.meta";
  for (std::string* name : all.names()) {
    if (!name->empty() && *name != kStandardStream) *name = driver::NameBelow(all.folder, *name);
  }
}

// The options for one script out of those for all.
CompileOptions OptionsFor(const driver::CompileOptions& run, const CompileOptions& all) {
  CompileOptions options = all;
  options.run = run;
  driver::MetaOptions& files = options.files;
  const std::string script = run.script_name();
  for (std::string* name : options.names()) {
    const bool makes_folder = driver::HasScriptFolder(*name);
    *name = driver::ExpandFileName(script, *name);
    if (makes_folder) files.in_new_folders.push_back(*name);
  }
  if (files.debug_meta == kStandardStream || files.depfile == kStandardStream) {
    throw WrongUsage("only the meta file can be written to standard output");
  }
  if (run.reads_standard_input()) {
    if (files.meta.empty()) {
      throw WrongUsage(all.folder.empty()
                           ? "a script from standard input needs -o"
                           : "a script from standard input needs --stdin-name or -o");
    }
    files.reads_standard_input = true;
  }
  if (files.meta.empty()) files.meta = DefaultMeta(sources::ToOpenablePath(script));
  if (files.meta == kStandardStream) UseStandardOutput(options);
  options.run.stores_paths = !files.debug_meta.empty();
  if (!run.project_file().empty()) files.settings.push_back(run.project_file());
  const driver::BaselineFiles& baseline = run.baseline_files;
  if (!baseline.read.empty() && baseline.written.empty()) files.settings.push_back(baseline.read);
  files.creation_time = driver::SourceDateEpoch();
  return options;
}

support::ExitStatus Compile(const CompileOptions& options) {
  const std::string script = sources::ToOpenablePath(options.run.script_name());
  const std::vector<driver::NamedFile> written = WrittenFor(options);
  KeepApart({"script", script}, written);
  const std::string project = options.run.project_file();
  const driver::BaselineFiles& baseline = options.run.baseline_files;
  for (const driver::NamedFile& kept : {driver::NamedFile{"project file", project},
                                        {"baseline", baseline.read},
                                        {"baseline", baseline.written}}) {
    for (const driver::NamedFile& file : written) {
      if (!kept.path.empty()) driver::RefuseToOverwrite(kept, file);
    }
  }
  driver::MetaFiles product(options.files);
  return driver::RunCompile(options.run, &product);
}

// No script has a file written that is another one's.
void KeepScriptsApart(const std::vector<driver::CompileOptions>& runs, const CompileOptions& all) {
  std::deque<CompileOptions> each;
  std::deque<std::string> scripts;
  std::vector<driver::NamedFile> kept;
  std::vector<driver::NamedFile> written;
  for (const driver::CompileOptions& run : runs) {
    const CompileOptions& options = each.emplace_back(OptionsFor(run, all));
    const std::string& script = scripts.emplace_back(sources::ToOpenablePath(run.script_name()));
    for (const driver::NamedFile& file : WrittenFor(options, &script)) written.push_back(file);
    kept.push_back({"script", script});
  }
  const diagnostics::ReportOptions& reporting = runs.front().reporting;
  const bool has_document = reporting.is_piece && !reporting.file.empty();
  if (has_document) written.push_back({"diagnostics file", reporting.file});
  driver::RefuseToWriteTwice(kept, written);
}

support::ExitStatus CompileAll(CompileOptions all) {
  driver::ExpandScripts(all.run);
  UseFolder(all);
  driver::RequireNamePerScript(all.run, "--output", all.files.meta);
  driver::RequireNamePerScript(all.run, "--debug-meta", all.files.debug_meta);
  driver::RequireNamePerScript(all.run, "--depfile", all.files.depfile);
  const std::vector<driver::CompileOptions> runs = driver::OptionsPerScript(all.run);
  if (runs.size() > 1) KeepScriptsApart(runs, all);
  return driver::RunAll(
      runs, [&](const driver::CompileOptions& run) { return Compile(OptionsFor(run, all)); });
}

}  // namespace

Action SetUpCompile(Arguments& arguments) {
  const auto options = std::make_shared<CompileOptions>();
  driver::MetaOptions& files = options->files;
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
      .Add("--output-dir", &options->folder,
           "Write the files below this folder, in subfolders that mirror those of the scripts")
      .File("DIR");
  arguments
      .Add(
          "--path-prefix-map", &options->run.prefix_map,
          "In the debug meta file, replace OLD at the beginning of script paths with NEW (default: "
          "paths relative to the script's folder)")
      .Value("OLD=NEW")
      .Check([](const std::string& map) {
        return std::string(map.find('=') == std::string::npos ? "expected OLD=NEW" : "");
      });
  arguments
      .Add("--depfile", &files.depfile,
           "Also write a rule for make or ninja that lists the files read")
      .File("FILE");
  arguments.Add("--if-changed", &files.if_changed, "Write only files whose content changes");
  arguments.Footer(
      "In the names of output files, {} is replaced by the name of the script and {dir} by its "
      "folder.\n\n"
      "Examples:\n  rux compile boards/server.rux -o server.meta -g server.metad\n"
      "  rux compile -j 4 boards/*.rux -o 'out/{}.meta'\n"
      "  rux compile --output-dir out boards");
  return [options] { return CompileAll(*options); };
}

}  // namespace rux::tool
