#include "machine/load.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "compiled/debug_meta.h"
#include "decompile/decompile.h"
#include "findings/message_row.h"
#include "machine/machine.h"
#include "machine/origins.h"
#include "machine/place.h"
#include "machine/source.h"
#include "reader/include_folders.h"
#include "run/log.h"
#include "run/readers.h"
#include "run/run.h"
#include "ruxcomp/compile.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/file/kept_bytes.h"
#include "ruxcomp/language/paths.h"
#include "ruxcomp/language/words.h"
#include "settings/project.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/failure.h"
#include "support/input_file.h"
#include "support/memory_file.h"
#include "support/standard_streams.h"
#include "support/workers.h"

namespace rux::machine {
namespace {

using ruxcomp::file::Form;
using support::ExitStatus;

support::Failure NotCompiled(const Source& source, const std::string& reason) {
  return support::Failure(ExitStatus::kTrouble, "cannot compile {}: {}", source.name, reason);
}

// What a process that compiles prints: the size of the meta file, that file, the debug meta file.
struct Compiled {
  std::string meta;
  std::string debug_meta;
};

void Print(std::string_view meta, std::string_view debug_meta) {
  std::string size(ruxcomp::language::kWordSize, '\0');
  ruxcomp::language::StoreWord(size, 0, static_cast<std::uint32_t>(meta.size()));
  support::PrintOut(size);
  support::PrintOut(meta);
  support::PrintOut(debug_meta);
}

Compiled Parsed(const std::string& output) {
  constexpr std::size_t kBegin = ruxcomp::language::kWordSize;
  const std::uint32_t size = ruxcomp::language::LoadWord(output.data());
  return {output.substr(kBegin, size), output.substr(kBegin + size)};
}

// The script that a debug meta file keeps. Throws a Failure when no script can say it.
std::string ScriptOf(const Source& source) {
  decompile::KeptScript kept =
      decompile::KeptScriptOf(compiled::SoundDebugMeta(source.name, source.bytes->view()));
  std::optional<std::string> obstacle = decompile::GroupBeforeParent(kept.meta);
  if (!obstacle) obstacle = decompile::MisreadItem(kept);
  if (obstacle) throw NotCompiled(source, *obstacle);
  return std::move(kept.text);
}

// "fans.rux:3: "; empty for what is about no line.
std::string PlaceText(const run::Result& result, const run::Finding& finding) {
  const sources::OriginSpot spot = result.sources.At(finding.origin);
  if (spot.opening != nullptr && spot.section != nullptr) {
    const std::uint32_t line = spot.item != nullptr ? spot.item->line : spot.section->line;
    return fmt::format("{}:{}: ", spot.opening->file->path(), line);
  }
  return finding.place ? fmt::format("{}:{}: ", finding.place->file, finding.place->line) : "";
}

// A machine with an error is not what its script says, also where the library goes on without what
// it cannot read.
void ExpectNoError(const Source& source, const run::Result& result) {
  for (const run::Finding& finding : result.findings) {
    if (finding.row->severity != ruxcomp::findings::Severity::kError) continue;
    throw NotCompiled(source, fmt::format("{}{} [{}]", PlaceText(result, finding),
                                          finding.row->summary, finding.row->id));
  }
  if (!result.accepted || result.raised) throw NotCompiled(source, "the library raised an error");
  if (result.sources.sections().empty()) throw NotCompiled(source, "it has no sections");
}

void Write(run::Run& run, const Source& source, bool (*write)(const std::string&),
           support::MemoryFile& file) {
  run.Write([&] {
    if (!write(file.Path())) file.ThrowIncomplete();
  });
  if (run.result().raised) throw NotCompiled(source, "the library raised an error");
}

// In a process of its own.
ExitStatus Compile(const Source& source, const std::vector<std::string>& folders, bool is_copy) {
  const ruxcomp::reader::IncludeFolders include_folders(folders);
  std::optional<run::Text> text;
  if (is_copy) text = run::Text{std::string(source.bytes->view())};
  if (source.form == Form::kDebugMeta) text = run::Text{ScriptOf(source)};
  ReadScriptsOf(source);
  run::Run run(ruxcomp::language::ToLibraryPath(source.path), text);
  run.ReadAndCheck();
  if (!run.result().opened) throw NotCompiled(source, "it cannot be read");
  ExpectNoError(source, run.result());
  support::MemoryFile meta(source.name);
  support::MemoryFile debug_meta(source.name);
  Write(
      run, source, [](const std::string& path) { return gccOutput(path) != 0; }, meta);
  Write(
      run, source, [](const std::string& path) { return gccOutputD(path) != 0; }, debug_meta);
  const bool has_places = source.form == Form::kNone;
  Print(meta.Bytes(), has_places ? debug_meta.Bytes() : source.bytes->view());
  return ExitStatus::kDone;
}

void ExpectOwnReader(const Source& source, bool is_copy) {
  if (source.form != Form::kDebugMeta && source.revision.empty() && !is_copy) return;
  if (!run::IsForeignReaderInstalled()) return;
  throw support::Failure(ExitStatus::kTrouble,
                         "cannot compile {}: the reader plug-in {} reads only files", source.name,
                         run::kPluginPath);
}

// What the process printed after "rux: error: " is for this one to report.
[[noreturn]] void ThrowError(const Source& source, const support::JobResult& job) {
  constexpr std::string_view kLead = "rux: error: ";
  std::string text = job.errors;
  if (text.compare(0, kLead.size(), kLead) == 0) text.erase(0, kLead.size());
  while (!text.empty() && text.back() == '\n') text.pop_back();
  if (text.empty()) throw NotCompiled(source, "the compiler ended early");
  throw support::Failure(ExitStatus::kTrouble, "{}", text);
}

std::shared_ptr<const settings::Project> ProjectOf(const Source& source,
                                                   const LoadOptions& options) {
  if (options.projects == nullptr) return nullptr;
  return options.projects->For(std::filesystem::path(source.path).parent_path().string());
}

class Loader {
 public:
  Loader(const std::vector<std::string>& names, const LoadOptions& options) : options_(options) {
    if (std::count(names.begin(), names.end(), support::kStandardInput) > 1)
      throw support::Failure(ExitStatus::kWrongUsage, "standard input can be read only once");
    sources_.reserve(names.size());
    for (const std::string& name : names) {
      sources_.push_back(ReadSource(name));
      if (is_copy()) sources_.back().path = options.place;
    }
    projects_.reserve(names.size());
    for (const Source& source : sources_) projects_.push_back(ProjectOf(source, options));
  }

  std::vector<Machine> Load(const std::function<void()>& meanwhile) {
    CompileAll(meanwhile);
    std::vector<Machine> machines;
    machines.reserve(sources_.size());
    for (std::size_t i = 0; i < sources_.size(); ++i) machines.push_back(MachineOf(i));
    return machines;
  }

 private:
  bool is_copy() const { return !options_.place.empty(); }

  void CompileAll(const std::function<void()>& meanwhile) {
    std::vector<std::size_t> scripts;
    for (std::size_t i = 0; i < sources_.size(); ++i) {
      if (sources_[i].form == Form::kMeta || sources_[i].is_missing) continue;
      ExpectOwnReader(sources_[i], is_copy());
      scripts.push_back(i);
    }
    if (scripts.empty()) {
      if (meanwhile != nullptr) meanwhile();
      return;
    }
    compiled_.resize(sources_.size());
    support::RunJobs(
        scripts.size(), std::max(std::thread::hardware_concurrency(), 1U),
        [&](std::size_t job) {
          return Compile(sources_[scripts[job]],
                         IncludeFoldersFor(sources_[scripts[job]], options_), is_copy());
        },
        [&](std::size_t job, const support::JobResult& done) {
          const Source& source = sources_[scripts[job]];
          if (done.status != ExitStatus::kDone) ThrowError(source, done);
          compiled_[scripts[job]] = Parsed(done.output);
        },
        [] {}, meanwhile);
  }

  Machine MachineOf(std::size_t i) {
    Source& source = sources_[i];
    if (source.is_missing) return Machine(source.name);
    std::unique_ptr<const Origins> origins;
    if (source.form != Form::kMeta) {
      source.bytes->Keep(std::move(compiled_[i].meta));
      origins = std::make_unique<Origins>(compiled_[i].debug_meta, source.revision);
    }
    return {source.name, Place{source.path, 0, source.revision}, std::move(source.bytes),
            std::move(origins), projects_[i]};
  }

  const LoadOptions& options_;
  std::vector<Source> sources_;
  std::vector<std::shared_ptr<const settings::Project>> projects_;
  std::vector<Compiled> compiled_;
};

}  // namespace

std::vector<std::string> IncludeFoldersFor(const Source& source, const LoadOptions& options) {
  std::vector<std::string> folders = options.include_folders;
  if (const auto project = ProjectOf(source, options)) {
    const std::vector<std::string>& more = project->include_folders;
    folders.insert(folders.end(), more.begin(), more.end());
  }
  return folders;
}

std::vector<Machine> Load(const std::vector<std::string>& names, const LoadOptions& options,
                          const std::function<void()>& meanwhile) {
  return Loader(names, options).Load(meanwhile);
}

}  // namespace rux::machine
