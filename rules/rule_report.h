// What the rules report. All that they need of `diagnostics/` is here.
#ifndef RULES_RULE_REPORT_H_
#define RULES_RULE_REPORT_H_

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "rules/rule_rows.h"
#include "rules/script_item.h"

namespace rux::rules {

// A warning that was just added, to be completed; not valid after the next one is.
class Warning {
 public:
  explicit Warning(diagnostics::Diagnostic& diagnostic) : diagnostic_(diagnostic) {}

  // Adds a note on another place, or on a part of another item's value.
  Warning& Note(std::string text, const Place& place);
  Warning& Note(std::string text, const ItemRef& item, std::string_view part);

  // What was probably meant by the name that the warning is about.
  Warning& Suggest(std::string meant);

 private:
  diagnostics::Diagnostic& diagnostic_;
};

class RuleReport {
 public:
  // A warning about an item, with the part of its value that is meant; without one, the key is.
  Warning Add(RuleId rule, const ItemRef& item, std::string_view text, std::string_view meant = {});
  // About a section as a whole.
  Warning Add(RuleId rule, const ScriptSection& section, std::string_view text);
  // About a line of a file.
  Warning Add(RuleId rule, const Place& place, std::string_view text);
  // About the script as a whole.
  Warning Add(RuleId rule, std::string_view text);

  // Keeps only the first one of warnings that are the same: a file that is included twice yields
  // its warnings twice.
  void DropRepeated();

  std::vector<diagnostics::Diagnostic> Take() { return std::move(warnings_); }

 private:
  Warning Add(diagnostics::Diagnostic warning);

  std::vector<diagnostics::Diagnostic> warnings_;
};

}  // namespace rux::rules

#endif  // RULES_RULE_REPORT_H_
