// Notes on other parts of the script that a finding has to do with.
#ifndef ADVICE_SCRIPT_NOTES_H_
#define ADVICE_SCRIPT_NOTES_H_

#include <optional>

#include "diagnostics/diagnostic.h"
#include "rules/defined_words.h"
#include "rules/rule_report.h"
#include "sources/source_set.h"

namespace rux::advice {

// Adds which SENSORS list a sensor that is in none belongs to: one with a sensor of the same group,
// or the only one there is.
void AddListToExtend(const sources::SourceSet& sources, diagnostics::Diagnostic& diagnostic);

// Adds where the header of a section may be missing that the script does not have.
void AddSwallowedSection(const sources::SourceSet& sources, diagnostics::Diagnostic& diagnostic);

// Of one run.
class TypeNotes {
 public:
  explicit TypeNotes(const sources::SourceSet& sources) : sources_(sources) {}

  // Adds which type the word that the diagnostic mentions stands for, and where it is defined.
  void AddNote(diagnostics::Diagnostic& diagnostic);

 private:
  const sources::SourceSet& sources_;
  rules::RuleReport unread_{{1}, false};
  std::optional<rules::DefinedWords> words_;
};

}  // namespace rux::advice

#endif  // ADVICE_SCRIPT_NOTES_H_
