#include "driver/meta_files.h"

#include <malloc.h>

#include <algorithm>

#include "compiled/debug_meta.h"
#include "compiled/debug_source.h"
#include "compiled/file_header.h"
#include "compiled/verify.h"
#include "compiled/words.h"
#include "driver/depfile.h"
#include "driver/overwriting.h"
#include "driver/unchanged.h"
#include "ruxcomp/compile.h"
#include "sources/script_path.h"
#include "support/failure.h"
#include "support/standard_streams.h"

namespace rux {
namespace {

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

// A script may say what makes a file that no host can load.
void ExpectSound(const NewFile& file) {
  const Faults faults = Verify(file.bytes);
  if (faults.empty()) return;
  throw Failure(ExitStatus::kTrouble, "cannot write " + file.path + ": it could not be loaded: " +
                                          FaultText(faults.list().front()));
}

}  // namespace

// The library writes into memory, where no fault can cut its files off unnoticed but for a limit.
std::vector<Diagnostic> MetaFiles::Make() {
  MemoryFile& meta = written_.emplace_back(options_.meta);
  if (gccOutput(meta.path()) == 0) meta.ThrowIncomplete();
  // What the compiled records have left would stay in use beside the files that are looked at now.
  malloc_trim(0);
  ExpectSound(Add(options_.meta, meta));
  if (options_.debug_meta.empty()) return {};
  MemoryFile& debug_meta = written_.emplace_back(options_.debug_meta);
  gccOutputD(debug_meta.path());
  std::string_view& bytes = Add(options_.debug_meta, debug_meta).bytes;
  if (!IsDebugMetaBytes(bytes)) debug_meta.ThrowIncomplete();
  Summary summary;
  if (!Verify(bytes, &summary).empty()) debug_meta.ThrowIncomplete();
  if (!options_.stdin_name.empty()) {
    std::string& renamed = texts_.emplace_back(bytes);
    RenameScript(renamed, options_.stdin_name);
    bytes = renamed;
  }
  if (summary.notes.empty()) return {};
  Faults faults;
  return WarningsOf(DecodeDebugMeta(bytes, faults));
}

void MetaFiles::Keep(const SourceFiles& sources) {
  const auto keep = [&](const NamedFile& written) {
    KeepSources(sources, written);
    if (!sources.complete) RefuseToGuess(written);
  };
  if (!options_.prints_meta) keep({"meta file", options_.meta});
  if (!options_.debug_meta.empty()) keep({"debug meta file", options_.debug_meta});
  if (!options_.depfile.empty()) files_.push_back(Depfile(sources));
  if (options_.prints_meta) {
    PrintOut(files_.front().bytes);
    files_.erase(files_.begin());
  }
  PutFilesInPlace();
}

void MetaFiles::KeepNone(const SourceFiles& sources) {
  if (options_.depfile.empty()) return;
  files_ = {Depfile(sources)};
  PutFilesInPlace();
}

NewFile& MetaFiles::Add(const std::string& path, MemoryFile& file) {
  if (options_.creation_time) {
    char time[kWordSize];
    StoreWord(*options_.creation_time, time);
    file.Overwrite(kCreationTimeOffset, {time, sizeof time});
  }
  return files_.emplace_back(NewFile{path, file.Bytes()});
}

void MetaFiles::PutFilesInPlace() {
  if (options_.if_changed) {
    const auto is_there = [&](const NewFile& file) {
      return IsThereAlready(file, options_.creation_time.has_value());
    };
    files_.erase(std::remove_if(files_.begin(), files_.end(), is_there), files_.end());
  }
  PutInPlace(files_);
}

NewFile MetaFiles::Depfile(const SourceFiles& sources) {
  if (!sources.complete) {
    throw Failure(ExitStatus::kTrouble,
                  "cannot write " + options_.depfile +
                      ": the script cannot be read again to tell which files it includes");
  }
  KeepSources(sources, {"dependency file", options_.depfile});
  std::vector<std::string> targets;
  if (!options_.prints_meta) targets.push_back(options_.meta);
  if (!options_.debug_meta.empty()) targets.push_back(options_.debug_meta);
  std::vector<std::string> prerequisites = sources.paths;
  if (!options_.stdin_name.empty()) prerequisites.erase(prerequisites.begin());
  return {options_.depfile,
          texts_.emplace_back(DepfileText(options_.depfile, targets, prerequisites))};
}

}  // namespace rux
