// rux compile SCRIPT [-o META] [-g METAD]
#include "ruxcomp/compile.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tool/command.h"
#include "tool/compile/compile_run.h"
#include "tool/compile/overwriting.h"
#include "tool/compile/script_path.h"
#include "tool/compiled/debug_meta.h"
#include "tool/compiled/verify.h"
#include "tool/failure.h"
#include "tool/files/memory_file.h"
#include "tool/files/placement.h"

namespace rux {
namespace {

struct Options {
  CompileOptions run;
  std::string meta;
  std::string debug_meta;  // empty: none
};

std::string DefaultMeta(const std::string& script) {
  return std::filesystem::path(script).replace_extension(".meta").string();
}

// The library drops INCLUDE sections when it loads a debug meta file. With the very first section
// goes the list of source files, without which it cannot take any other.
std::vector<Diagnostic> WarningsOf(const DebugMeta& meta) {
  if (meta.kinds.size() < 2 || meta.kinds.front().front().name != "INCLUDE") return {};
  const DebugSection& first = meta.kinds.front().front();
  Diagnostic warning;
  warning.id = MessageId::kIncludeFirst;
  warning.severity = Severity::kWarning;
  warning.anchor = Anchor::kPlace;
  warning.file = BaseNameOf(meta.files[first.file_index]);
  warning.line = first.line;
  warning.section = first.name;
  warning.text =
      "a debug meta file that begins with this section cannot be loaded; put another section, such "
      "as [MORVRUX], first";
  return {warning};
}

// The meta file and, if it is asked for, the debug meta file: both or none.
class MetaFiles : public CompileProduct {
 public:
  explicit MetaFiles(const Options& options) : options_(options) {}

  // The library writes into memory, where no fault can cut its files off unnoticed but for a limit.
  std::vector<Diagnostic> Make() override {
    const MemoryFile meta(options_.meta);
    if (gccOutput(meta.path()) == 0) meta.ThrowIncomplete();
    files_.push_back({options_.meta, meta.Bytes()});
    ExpectSound(files_.back());
    if (options_.debug_meta.empty()) return {};
    const MemoryFile debug_meta(options_.debug_meta);
    gccOutputD(debug_meta.path());
    const std::string& bytes =
        files_.emplace_back(NewFile{options_.debug_meta, debug_meta.Bytes()}).bytes;
    if (!IsDebugMetaBytes(bytes)) debug_meta.ThrowIncomplete();
    Summary summary;
    if (!Verify(bytes, &summary).empty()) debug_meta.ThrowIncomplete();
    if (summary.notes.empty()) return {};
    Faults faults;
    return WarningsOf(DecodeDebugMeta(bytes, faults));
  }

  void Keep(const SourceView& sources) override {
    const auto keep = [&](const NamedFile& written) {
      KeepSources(sources, written);
      if (!sources.complete()) RefuseToGuess(written);
    };
    keep({"meta file", options_.meta});
    if (!options_.debug_meta.empty()) keep({"debug meta file", options_.debug_meta});
    PutInPlace(files_);
  }

 private:
  // A script may say what makes a file that no host can load.
  static void ExpectSound(const NewFile& file) {
    const Faults faults = Verify(file.bytes);
    if (faults.empty()) return;
    throw Failure(ExitStatus::kTrouble, "cannot write " + file.path + ": it could not be loaded: " +
                                            FaultText(faults.list().front()));
  }

  const Options& options_;
  std::vector<NewFile> files_;
};

ExitStatus Compile(Options options) {
  const std::string script = ToOpenablePath(ToLibraryPath(options.run.script));
  if (options.meta.empty()) options.meta = DefaultMeta(script);
  const NamedFile kept{"script", script};
  const NamedFile meta{"meta file", options.meta};
  RefuseToOverwrite(kept, meta);
  if (!options.debug_meta.empty()) {
    const NamedFile debug_meta{"debug meta file", options.debug_meta};
    RefuseToOverwrite(kept, debug_meta);
    RefuseToOverwrite(meta, debug_meta);
  }
  if (!options.run.telling.file.empty()) {
    const NamedFile told{"diagnostics file", options.run.telling.file};
    RefuseToOverwrite(meta, told);
    if (!options.debug_meta.empty())
      RefuseToOverwrite({"debug meta file", options.debug_meta}, told);
  }
  MetaFiles files(options);
  return RunCompile(options.run, &files);
}

}  // namespace

Action SetUpCompile(CLI::App& app) {
  const auto options = std::make_shared<Options>();
  AddCompileOptions(app, options->run);
  app.add_option("-o,--output", options->meta,
                 "The meta file to write (default: the script's name with .meta)")
      ->type_name("META")
      ->check(IsFileName());
  app.add_option("-g,--debug-meta", options->debug_meta,
                 "Also write this debug meta file, for where, dump and decompile")
      ->type_name("METAD")
      ->check(IsFileName());
  app.footer("Example:\n  rux compile boards/server.rux -o server.meta -g server.metad");
  return [options] { return Compile(*options); };
}

}  // namespace rux
