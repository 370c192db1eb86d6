// The warnings that comments of a script allow.
#ifndef ADVICE_ALLOWANCES_H_
#define ADVICE_ALLOWANCES_H_

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "diagnostics/registry.h"
#include "findings/message_row.h"
#include "rules/rule_report.h"
#include "sources/allow_comments.h"
#include "sources/source_set.h"
#include "support/text_file.h"

namespace rux::advice {

inline constexpr ruxcomp::findings::MessageRow kUnusedAllow = {
    "",
    "unused-allow",
    ruxcomp::findings::Level::kSuspect,
    "a comment allows a warning that does not occur",
    "A comment \"# rux: allow ID\" suppresses the warnings with the id: at the end of a line, "
    "those of the line; on a line of its own directly above or below the header of a section, "
    "those of the section; above the first section, those of the file. This one suppresses "
    "nothing. Delete it, or correct its words or the id. Errors cannot be allowed. A comment in a "
    "file that several machines include is reported when rux check of that file, or of a folder "
    "with all of them, finds that none of them uses it.",
    R"([DEFINE]
FAST = 1 # rux: allow surplus-values
)",
    R"([DEFINE]
FAST = 1, 2 # rux: allow surplus-values
)"};

// Of one run, whose sources must outlive it.
class Allowances : public diagnostics::Filter {
 public:
  Allowances(const sources::SourceSet& sources, const diagnostics::Registry& registry);

  bool Concerns(const diagnostics::MessageRow& row) const override {
    return rows_.count(&row) != 0;
  }
  // Whether a comment allows the warning. Notes that the comment is of use.
  bool Takes(const diagnostics::Diagnostic& warning) override;

  // Whether any comment of the file is about the message.
  bool MayTake(const diagnostics::MessageRow& row, const support::TextFile* file) const {
    return places_.count({file, &row}) != 0;
  }

  // Whether all that a comment of the file may allow with that message was looked for.
  using Knows = std::function<bool(const sources::SourceFile&, const diagnostics::MessageRow&)>;

  // The comments that allow nothing, because of what they say; and those that nothing made use of,
  // where that is known. Ids of this message are left for a second call, after it took the result
  // of the first.
  rules::Warnings Unused(const Knows& knows, bool is_second) const;

 private:
  // An id of a comment.
  struct Allowed {
    const sources::SourceFile* file;
    const sources::AllowComment* comment;
    std::string_view id;
    const diagnostics::MessageRow* row;  // null: no warning has the id
    bool is_used = false;
  };
  // Those of one message in one file, by their place there.
  struct Places {
    std::vector<Allowed*> lines;
    std::vector<Allowed*> sections;
    Allowed* file = nullptr;
  };

  void Add(const sources::SourceFile& file, const sources::AllowComment& comment);
  Allowed* Find(const diagnostics::Diagnostic& warning);
  std::string WhyUnused(const Allowed& allowed) const;
  static std::optional<diagnostics::Fix> RemovalOf(const Allowed& allowed);

  const diagnostics::Registry& registry_;
  const sources::SourceFile* script_ = nullptr;
  std::vector<std::pair<const sources::SourceFile*, std::vector<sources::AllowComment>>> comments_;
  std::deque<Allowed> all_;
  std::map<std::pair<const support::TextFile*, const diagnostics::MessageRow*>, Places> places_;
  std::set<const diagnostics::MessageRow*> rows_;
};

}  // namespace rux::advice

#endif  // ADVICE_ALLOWANCES_H_
