#include "driver/meta_files.h"

#include <malloc.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/compiled_file.h"
#include "compiled/debug_meta.h"
#include "compiled/verify.h"
#include "diagnostics/diagnostic.h"
#include "driver/messages.h"
#include "driver/overwriting.h"
#include "run/run.h"
#include "ruxcomp/compile.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/words.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/failure.h"
#include "support/memory_file.h"
#include "support/placement.h"
#include "support/standard_streams.h"

namespace rux::driver {
namespace {

// The library drops INCLUDE sections when it loads a debug meta file. With the very first section
// goes the list of source files, without which it cannot take any other.
std::vector<diagnostics::Diagnostic> WarningsOf(const compiled::DebugMeta& meta,
                                                const sources::SourceSet& sources) {
  constexpr const char* kInclude =
      ruxcomp::language::KindOf(ruxcomp::language::SECTION_INCLUDE).keyword;
  if (meta.kinds.size() < 2 || meta.kinds.front().front().name != kInclude) return {};
  const compiled::DebugSection& first = meta.kinds.front().front();
  diagnostics::Diagnostic warning;
  warning.row = &kIncludeFirst;
  warning.severity = kIncludeFirst.severity;
  // What comes first is in the script itself.
  if (!sources.openings().empty()) {
    const sources::SourceFile& script = *sources.openings().front().file;
    warning.at = diagnostics::LocationIn(script, script.RangeAt(first.line));
  }
  warning.section = first.name;
  warning.text =
      "a debug meta file that begins with this section cannot be loaded; put another section, such "
      "as [MORVRUX], first";
  return {warning};
}

// A script may say what makes a file that no host can load.
void ExpectSound(const support::NewFile& file) {
  const compiled::Faults faults = compiled::Verify(file.bytes);
  if (faults.empty()) return;
  throw support::Failure(support::ExitStatus::kTrouble,
                         "cannot write {}: it could not be loaded: {}", file.path,
                         compiled::FaultText(faults.list().front()));
}

}  // namespace

// The library writes into memory, where no fault can cut its files off unnoticed but for a limit.
std::vector<diagnostics::Diagnostic> MetaFiles::Make(const run::Result& result) {
  support::MemoryFile& meta = written_.emplace_back(options_.meta);
  if (gccOutput(meta.Path()) == 0) meta.ThrowIncomplete();
  // What the compiled records have left would stay in use beside the files that are looked at now.
  malloc_trim(0);
  ExpectSound(Add(options_.meta, meta));
  if (options_.debug_meta.empty()) return {};
  support::MemoryFile& debug_meta = written_.emplace_back(options_.debug_meta);
  gccOutputD(debug_meta.Path());
  const std::string_view bytes = Add(options_.debug_meta, debug_meta).bytes;
  if (!compiled::IsDebugMetaBytes(bytes)) debug_meta.ThrowIncomplete();
  compiled::Summary summary;
  if (!compiled::Verify(bytes, &summary).empty()) debug_meta.ThrowIncomplete();
  if (summary.notes.empty()) return {};
  compiled::Faults faults;
  return WarningsOf(compiled::DecodeDebugMeta(bytes, faults), result.sources);
}

bool MetaFiles::LooksFor(const diagnostics::MessageRow& row) const {
  return &row == &kIncludeFirst && !options_.debug_meta.empty();
}

void MetaFiles::Keep(const run::Result& result) {
  const sources::SourceFiles& sources = result.files;
  const auto keep = [&](const NamedFile& written) {
    KeepSources(sources, written);
    if (!sources.complete) RefusePossibleSource(written);
  };
  if (!options_.prints_meta) keep({"meta file", options_.meta});
  if (!options_.debug_meta.empty()) keep({"debug meta file", options_.debug_meta});
  if (!options_.depfile.empty()) files_.push_back(Depfile(sources));
  if (options_.prints_meta) {
    support::PrintOut(files_.front().bytes);
    files_.erase(files_.begin());
  }
  PutFilesInPlace();
}

void MetaFiles::Discard(const run::Result& result) {
  if (options_.depfile.empty()) return;
  files_ = {Depfile(result.files)};
  PutFilesInPlace();
}

const support::NewFile& MetaFiles::Add(const std::string& path, support::MemoryFile& file) {
  if (options_.creation_time) {
    char time[ruxcomp::language::kWordSize];
    ruxcomp::language::StoreWord(time, *options_.creation_time);
    file.Overwrite(compiled::kTimeOffset, {time, sizeof time});
  }
  const support::NewFile& added = files_.emplace_back(support::NewFile{path, file.Bytes()});
  if (added.bytes.size() > compiled::kLargestFile) throw compiled::TooLarge("cannot write", path);
  return added;
}

void MetaFiles::PutFilesInPlace() {
  if (options_.if_changed) {
    const auto is_there = [&](const support::NewFile& file) {
      return HasSameContent(file, options_.creation_time.has_value());
    };
    files_.erase(std::remove_if(files_.begin(), files_.end(), is_there), files_.end());
  }
  for (const std::string& file : options_.in_new_folders) support::MakeFolderOf(file);
  support::PutInPlace(files_);
}

support::NewFile MetaFiles::Depfile(const sources::SourceFiles& sources) {
  if (!sources.complete) {
    throw support::Failure(
        support::ExitStatus::kTrouble,
        "cannot write {}: the script cannot be read again to find out which files it includes",
        options_.depfile);
  }
  KeepSources(sources, {"dependency file", options_.depfile});
  std::vector<std::string> targets;
  if (!options_.prints_meta) targets.push_back(options_.meta);
  if (!options_.debug_meta.empty()) targets.push_back(options_.debug_meta);
  std::vector<std::string> prerequisites = sources.paths;
  if (options_.reads_standard_input) prerequisites.erase(prerequisites.begin());
  prerequisites.insert(prerequisites.end(), options_.settings.begin(), options_.settings.end());
  return {options_.depfile,
          texts_.emplace_back(DepfileText(options_.depfile, targets, prerequisites))};
}

}  // namespace rux::driver
