// What compiling a script makes: meta file, debug meta file, dependency file.
#ifndef DRIVER_META_FILES_H_
#define DRIVER_META_FILES_H_

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "driver/compile_run.h"
#include "support/memory_file.h"
#include "support/placement.h"

namespace rux::driver {

// A rule in the syntax that make and ninja share: the targets, and each of the prerequisites once,
// in order. Each prerequisite is also a target of its own, without a recipe, so that make goes on
// when one is not there any more.
//
// Throws a Failure that names `path`, the file that the rule is for, when one of the other names
// cannot be written so that both tools read it as it is.
std::string DepfileText(const std::string& path, const std::vector<std::string>& targets,
                        const std::vector<std::string>& prerequisites);

// Such a rule, read back from the file at `path`. Throws a Failure when it cannot be read or is of
// another form.
struct DepfileRule {
  std::vector<std::string> targets;
  std::vector<std::string> prerequisites;
};
DepfileRule ReadDepfile(const std::string& path);

struct MetaOptions {
  std::string meta;                            // with prints_meta, for messages only
  bool prints_meta = false;                    // to standard output
  std::string debug_meta;                      // empty: none
  std::string depfile;                         // empty: none
  std::optional<std::uint32_t> creation_time;  // none: now
  std::vector<std::string> in_new_folders;     // of these files: their folders are made
  bool if_changed = false;                     // keep files whose bytes would not change
  bool reads_standard_input = false;           // the script is not a file
  std::vector<std::string> settings;           // files that the outcome depends on
};

// The meta file and, if they are asked for, the debug meta file and the dependency file: all or
// none. The dependency file is also written for a script with errors.
class MetaFiles : public CompileProduct {
 public:
  explicit MetaFiles(const MetaOptions& options) : options_(options) {}

  std::vector<diagnostics::Diagnostic> Make(const run::Result& result) override;
  bool LooksFor(const diagnostics::MessageRow& row) const override;
  void Keep(const run::Result& result) override;
  void Discard(const run::Result& result) override;

 private:
  // Takes over what the library wrote. Throws a Failure when nothing could load it for its size.
  const support::NewFile& Add(const std::string& path, support::MemoryFile& file);
  void PutFilesInPlace();
  support::NewFile Depfile(const sources::SourceFiles& sources);

  const MetaOptions& options_;
  std::vector<support::NewFile> files_;  // with the bytes of those below
  std::deque<support::MemoryFile> written_;
  std::deque<std::string> texts_;
};

}  // namespace rux::driver

#endif  // DRIVER_META_FILES_H_
