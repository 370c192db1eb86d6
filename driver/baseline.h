// The baseline of a command: what its runs find, compared with what was there before.
#ifndef DRIVER_BASELINE_H_
#define DRIVER_BASELINE_H_

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "reader/script.h"
#include "settings/baseline.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/memory_file.h"

namespace rux::driver {

// Which files are used; an empty name is none.
struct BaselineFiles {
  std::string read;
  std::string written;

  bool is_used() const { return !read.empty() || !written.empty(); }
};

// Of all runs of a command, which may be in processes of their own: they note what they find.
class Baseline {
 public:
  // Reads the baseline. Throws a Failure.
  explicit Baseline(BaselineFiles files);

  const BaselineFiles& files() const { return files_; }
  const settings::BaselineCounts& known() const { return known_; }

  // A whole name as the baseline that is read has it.
  std::string NameInBaseline(const std::string& whole_name) const;

  // Called by each run, when it is done.
  void Note(std::string_view notes);

  // The main scripts that include a file; none when it is one, or when they are not known.
  using FindMains = std::function<std::vector<std::string>(const std::string& file)>;

  // Called when all runs are done: writes the baseline and returns a line about entries of the one
  // that was read that did not occur; empty when there are none. A file that several
  // machines include has as many warnings as the machine with the most. Throws a Failure.
  std::string End(const FindMains& find_mains);

 private:
  struct Noted;
  class Outdated;
  Noted ReadNotes();
  void Write(const Noted& noted) const;
  std::string OutdatedText(const Noted& noted, const FindMains& find_mains) const;

  const BaselineFiles files_;
  const settings::BaselineCounts known_;
  const std::string folder_;  // the whole name of the folder of the one that is read
  support::MemoryFile notes_;
};

// Of one run, whose sources must outlive it: takes the warnings that are in the baseline, or will
// be when it is written.
class BaselineFilter : public diagnostics::Filter {
 public:
  // `script`: the path of what is not in any file of the sources.
  BaselineFilter(Baseline& baseline, const sources::SourceSet& sources, std::string script);

  bool Concerns(const diagnostics::MessageRow&) const override { return true; }
  bool Takes(const diagnostics::Diagnostic& warning) override;

  // Notes what was found in the files, of which all warnings are known if `is_complete`.
  void Note(const std::vector<std::string>& files, bool is_complete);

 private:
  // The names of a file: the whole one, and that in the baseline.
  struct FileNames {
    std::string whole;
    std::string in_baseline;
  };
  const FileNames& NamesOf(const std::string& path);
  const std::string& NameOf(const sources::SourceFile& file,
                            const ruxcomp::reader::Section& section);

  Baseline& baseline_;
  const sources::SourceSet& sources_;
  const std::string script_;
  std::map<std::string, FileNames> names_;
  // By their files and lines.
  std::map<std::pair<const sources::SourceFile*, std::uint32_t>, std::string> section_names_;
  settings::BaselineCounts found_;  // by whole names
};

}  // namespace rux::driver

#endif  // DRIVER_BASELINE_H_
