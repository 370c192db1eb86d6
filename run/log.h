// What the library, its reader and the run itself report, as values; and the log of a run.
#ifndef RUN_LOG_H_
#define RUN_LOG_H_

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "findings/message_row.h"
#include "findings/origin.h"
#include "findings/tally.h"

namespace rux::run {

// What the library was doing. kLoad is before main().
enum class Phase { kLoad, kStart, kParse, kCheck, kOutput };

// A long text is cut to its beginning (support::Excerpted).
using Argument = std::variant<std::string, std::uint32_t>;

struct Place {
  std::string file;  // its base name
  std::uint32_t line;
};

struct Finding {
  const ruxcomp::findings::MessageRow* row;
  ruxcomp::findings::Origin origin = {};
  ruxcomp::findings::Origin other = {};
  std::optional<Place> place = {};
  std::vector<Argument> arguments = {};  // of the message's format; without one, the text
};

#define MESSAGE(name, format, id, level, ...)                \
  inline constexpr ruxcomp::findings::MessageRow k##name = { \
      format, id, ruxcomp::findings::Level::level, __VA_ARGS__};
#include "run/rows.def"

inline constexpr const ruxcomp::findings::MessageRow* kRows[] = {
#define MESSAGE(name, ...) &k##name,
#include "run/rows.def"
};

class Log {
 public:
  // From now on, keeps so many of each message, and none of those.
  void Limit(ruxcomp::findings::Most most, ruxcomp::findings::MessageRows left_out) {
    tally_ = ruxcomp::findings::Tally(most);
    left_out_ = left_out;
  }

  // What is reported from now on belongs to that phase.
  void Begin(Phase phase);

  // Call it once for each finding, before making it: counts the finding and answers whether to keep
  // it. What the check repeats about a part of the script after the reading counts once.
  // With `may_go`, it is kept in any case.
  bool Wants(const ruxcomp::findings::MessageRow& row, const ruxcomp::findings::Origin& origin,
             bool may_go = false);
  void Keep(Finding finding) { kept_.push_back(std::move(finding)); }

  const ruxcomp::findings::Tally& tally() const { return tally_; }
  std::vector<Finding> Take() { return std::exchange(kept_, {}); }

 private:
  struct Known {
    ruxcomp::findings::Origin origin;
    const ruxcomp::findings::MessageRow* row;
  };
  static bool IsBefore(const Known& a, const Known& b);

  bool IsRepeated(const ruxcomp::findings::MessageRow& row,
                  const ruxcomp::findings::Origin& origin);

  Phase phase_ = Phase::kLoad;
  ruxcomp::findings::Tally tally_;
  ruxcomp::findings::MessageRows left_out_ = {};
  std::vector<Finding> kept_;
  std::deque<Known> read_;  // what the reading found; sorted for the check
};

// The one log of the process. The sink of a run adds to it, and so does the function Output, which
// a plug-in calls and, before main(), the library. It can be used before main().
Log& ProcessLog();

}  // namespace rux::run

#endif  // RUN_LOG_H_
