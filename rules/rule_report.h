// What the rules report. All that they need of `diagnostics/` is here.
#ifndef RULES_RULE_REPORT_H_
#define RULES_RULE_REPORT_H_

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "diagnostics/diagnostic.h"
#include "findings/tally.h"
#include "rules/rule_rows.h"
#include "rules/script_item.h"
#include "rules/warning_text.h"
#include "rules/warnings.h"

namespace rux::rules {

// A warning that was just added, to be completed; not valid after the next one is. One that is not
// kept takes what it is given and forgets it.
class Warning {
 public:
  explicit Warning(diagnostics::Diagnostic* diagnostic) : diagnostic_(diagnostic) {}

  // Adds a note on another place, or on a part of another item's value.
  Warning& Note(std::string text, const Place& place);
  Warning& Note(std::string text, const ItemRef& item, std::string_view part);

  // What was probably meant by the name that the warning is about.
  Warning& Suggest(std::string meant);

 private:
  diagnostics::Diagnostic* const diagnostic_;  // null: it is not kept
};

class RuleReport {
 public:
  // Keeps so many warnings of each rule. A file that is included twice yields its warnings twice:
  // with `drops_repeated`, one that is the same as another is none.
  RuleReport(findings::Most most, bool drops_repeated)
      : warnings_{{}, findings::Tally(most)}, drops_repeated_(drops_repeated) {}

  // A warning about an item, with the part of its value that is meant; without one, the key is.
  Warning Add(RuleId rule, const ItemRef& item, const WarningText& text,
              std::string_view meant = {});
  // About a section as a whole.
  Warning Add(RuleId rule, const ScriptSection& section, const WarningText& text);
  // About a line of a file, or bytes of it.
  Warning Add(RuleId rule, const Place& place, const WarningText& text);
  Warning Add(RuleId rule, const Bytes& bytes, const WarningText& text);
  // About the script as a whole.
  Warning Add(RuleId rule, const WarningText& text);

  Warnings Take() { return std::move(warnings_); }

 private:
  // Null when the warning is not kept.
  diagnostics::Diagnostic* Begin(RuleId rule, const Bytes& bytes, const WarningText& text);
  bool IsRepeated(RuleId rule, const Bytes& bytes, const WarningText& text);

  // With the hash of its text.
  using Known = std::tuple<RuleId, const ScriptFile*, std::uint32_t, std::size_t>;

  Warnings warnings_;
  const bool drops_repeated_;
  std::set<Known> known_;
};

}  // namespace rux::rules

#endif  // RULES_RULE_REPORT_H_
