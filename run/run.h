// One run of the library over one script.
#ifndef RUN_RUN_H_
#define RUN_RUN_H_

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "findings/finding.h"
#include "findings/tally.h"
#include "reader/archive.h"
#include "run/log.h"
#include "run/readers.h"
#include "sources/source_set.h"

namespace rux::run {

// An error that the library raised: some texts that are read as numbers have no digits.
struct Raised {
  Phase phase;
  ruxcomp::findings::Origin at;  // what was being examined; all kNone: nothing of a script
  std::string text;              // of the exception
};

struct Result {
  // All that was read; with a foreign plug-in, what this program reads at the same paths.
  sources::SourceSet sources;
  // All files that there are to read, including those after a raised error.
  sources::SourceFiles files;
  bool has_foreign_reader = false;
  bool opened = false;
  bool accepted = false;
  std::vector<Finding> findings;   // the first ones of each message, in order
  ruxcomp::findings::Tally tally;  // of all of them
  std::optional<Raised> raised;
};

// What is read instead of a file.
struct Text {
  std::string bytes;
  std::string path = {};  // of the file, as it can be opened; empty: the script
};

// There is one at a time. Lets std::bad_alloc through, and the failures that a step throws.
class Run {
 public:
  // `script`: the library's path of it. `text`: what to read instead of a file, if anything.
  // `most`: how many findings to keep of each message. `left_out`: messages that somebody else
  // reports.
  // `marker`: what is found in scripts with that text is all kept; empty: in none.
  explicit Run(std::string script, const std::optional<Text>& text = std::nullopt,
               ruxcomp::findings::Most most = 0, ruxcomp::findings::MessageRows left_out = {},
               std::string_view marker = {});
  ~Run();
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  // Opens, reads and checks the script, as long as each succeeds.
  void ReadAndCheck();

  // Runs a step in which the library works on the checked model. An error that the library raises
  // becomes part of the result. The sources release memory for what is written.
  void Write(const std::function<void()>& step);

  const Result& result() const { return result_; }

  // For what outlives the run; the result has none then.
  sources::SourceSet TakeSources() { return std::move(result_.sources); }

 private:
  class LogSink : public ruxcomp::findings::Sink {
   public:
    explicit LogSink(Run& run) : run_(run) {}
    void Take(const ruxcomp::findings::Finding& finding) override;

   private:
    Run& run_;
  };

  bool IsMarked(std::uint32_t script);
  void Guarded(Phase phase, const std::function<void()>& step);
  void ReadSources();

  const std::string script_;
  // Of the text in memory. For the script, the last name that is looked for, so that the text
  // replaces the file under any.
  std::string text_path_;
  const std::string_view marker_;
  std::vector<std::optional<bool>> is_marked_;         // of the scripts in which anything was found
  const ruxcomp::reader::Archive* archive_ = nullptr;  // while the scripts are read
  LogSink sink_;
  ruxcomp::findings::Sink* const sink_before_;
  const ReaderChoice choice_;
  Result result_;
};

// The path at which the library looks for its plug-in.
extern const char* const kPluginPath;

}  // namespace rux::run

#endif  // RUN_RUN_H_
