// The texts of diagnostics, from the wordings of their messages.
#ifndef ADVICE_WORDING_H_
#define ADVICE_WORDING_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "rules/defined_words.h"
#include "rules/rule_report.h"
#include "sources/source_set.h"

namespace rux::advice {

// Facts that wordings name about a value of a known type:
//
//   takes  "4 parts (type, operator, operand1, operand2)"
//   found  how many parts it has
class Wordings {
 public:
  explicit Wordings(const sources::SourceSet& sources) : sources_(sources) {}

  // The text of a located diagnostic whose arguments are known; nothing when the script does not
  // show a fact, because another reader read it.
  std::optional<std::string> TextOf(const diagnostics::Diagnostic& diagnostic);

 private:
  std::optional<std::string> Find(const diagnostics::Diagnostic& diagnostic, std::string_view name);
  std::optional<std::string> FindFact(const diagnostics::Diagnostic& diagnostic,
                                      std::string_view name);
  const rules::DefinedWords& words();

  const sources::SourceSet& sources_;
  rules::RuleReport unread_{{1}, false};  // other rules report words
  std::optional<rules::DefinedWords> words_;
};

// An argument as texts show it.
std::string Shown(const diagnostics::Argument& argument);

}  // namespace rux::advice

#endif  // ADVICE_WORDING_H_
