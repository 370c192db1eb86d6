#include "tool/compile/meta_files.h"

#include "ruxcomp/compile.h"
#include "tool/compile/depfile.h"
#include "tool/compile/overwriting.h"
#include "tool/compile/script_path.h"
#include "tool/compiled/debug_meta.h"
#include "tool/compiled/verify.h"
#include "tool/failure.h"
#include "tool/files/memory_file.h"

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
  const MemoryFile meta(paths_.meta);
  if (gccOutput(meta.path()) == 0) meta.ThrowIncomplete();
  files_.push_back({paths_.meta, meta.Bytes()});
  ExpectSound(files_.back());
  if (paths_.debug_meta.empty()) return {};
  const MemoryFile debug_meta(paths_.debug_meta);
  gccOutputD(debug_meta.path());
  const std::string& bytes =
      files_.emplace_back(NewFile{paths_.debug_meta, debug_meta.Bytes()}).bytes;
  if (!IsDebugMetaBytes(bytes)) debug_meta.ThrowIncomplete();
  Summary summary;
  if (!Verify(bytes, &summary).empty()) debug_meta.ThrowIncomplete();
  if (summary.notes.empty()) return {};
  Faults faults;
  return WarningsOf(DecodeDebugMeta(bytes, faults));
}

void MetaFiles::Keep(const SourceFiles& sources) {
  const auto keep = [&](const NamedFile& written) {
    KeepSources(sources, written);
    if (!sources.complete) RefuseToGuess(written);
  };
  keep({"meta file", paths_.meta});
  if (!paths_.debug_meta.empty()) keep({"debug meta file", paths_.debug_meta});
  if (!paths_.depfile.empty()) files_.push_back(Depfile(sources));
  PutInPlace(files_);
}

void MetaFiles::KeepNone(const SourceFiles& sources) {
  if (!paths_.depfile.empty()) PutInPlace({Depfile(sources)});
}

NewFile MetaFiles::Depfile(const SourceFiles& sources) const {
  if (!sources.complete) {
    throw Failure(ExitStatus::kTrouble,
                  "cannot write " + paths_.depfile +
                      ": the script cannot be read again to tell which files it includes");
  }
  KeepSources(sources, {"dependency file", paths_.depfile});
  std::vector<std::string> targets = {paths_.meta};
  if (!paths_.debug_meta.empty()) targets.push_back(paths_.debug_meta);
  return {paths_.depfile, DepfileText(paths_.depfile, targets, sources.paths)};
}

}  // namespace rux
