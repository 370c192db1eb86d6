// The names of a script and of the language, as candidates for a suggestion.
#ifndef ADVICE_NAMES_H_
#define ADVICE_NAMES_H_

#include <string>
#include <vector>

#include "diagnostics/diagnostic.h"
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
NameFinder PelmgroupIds;
NameFinder SensorIds;

}  // namespace rux::advice

#endif  // ADVICE_NAMES_H_
