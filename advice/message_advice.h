// What to underline, suggest and hint at, message by message.
#ifndef ADVICE_MESSAGE_ADVICE_H_
#define ADVICE_MESSAGE_ADVICE_H_

#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_set.h"

namespace rux::advice {

// Each gives the names that may have been meant where the diagnostic is.
using NameFinder = std::vector<std::string>(const sources::SourceSet& sources,
                                            const diagnostics::Diagnostic& diagnostic);

// Of the language.
NameFinder SectionKeywords;
NameFinder Operators;
NameFinder Keywords;  // the keys that the section takes

// Of the script.
NameFinder DefinedWords;
NameFinder Globals;
NameFinder LocalValues;  // the values of the same ACTION; those of other sections are not operands
NameFinder WordsAndOperands;  // what may be written for a number
NameFinder GroupNames;
NameFinder ActionNames;
NameFinder TableNames;

// What is underlined of the place that a finding names.
enum class Underline {
  kPlace,        // the part, the key or the header itself
  kToLastPart,   // the part and those after it
  kHeader,       // the header of the section that it is in
  kSectionName,  // the name in the header
};

using Names = std::vector<std::string>;

// The sections of a kind that have a text in an entry; without one, those that have it as a key.
struct Definition {
  ruxcomp::language::SectionId kind = {};  // 0: none
  ruxcomp::language::EntryId entry = {};

  bool is_any() const { return kind != ruxcomp::language::SectionId{}; }
  bool is_key() const { return is_any() && entry == ruxcomp::language::EntryId{}; }
};

struct MessageAdvice {
  const ruxcomp::findings::MessageRow* row = nullptr;
  Underline underline = Underline::kPlace;
  const char* other = nullptr;      // what the other place is
  const char* of_itself = nullptr;  // the text when that is the same section

  // The names to suggest from, and what all of them begin with: nothing that they are alike in.
  Names (*names)(const sources::SourceSet& sources,
                 const diagnostics::Diagnostic& diagnostic) = nullptr;
  std::string_view prefix = {};

  // A sentence for where the text leaves something open.
  bool (*needs_hint)(const diagnostics::Diagnostic& diagnostic) = nullptr;
  const char* hint = nullptr;

  // What the scripts lack when they have the message.
  Definition missing = {};
};

// A message without a row has the defaults above.
const MessageAdvice& AdviceFor(const ruxcomp::findings::MessageRow* row);

// The form of keys of the script's own in sections of a kind; empty for kinds that take none.
std::string KeyRuleOf(std::string_view section);

}  // namespace rux::advice

#endif  // ADVICE_MESSAGE_ADVICE_H_
