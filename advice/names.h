// The names that a script and the language give, for those who look for what was meant.
#ifndef ADVICE_NAMES_H_
#define ADVICE_NAMES_H_

#include <string>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "sources/source_set.h"

namespace rux::advice {

// Each gives the names that may have been meant where the diagnostic is.
using FindNames = std::vector<std::string>(const sources::SourceSet& sources,
                                           const diagnostics::Diagnostic& diagnostic);

// Of the language.
FindNames SectionKeywords;
FindNames Operators;
FindNames Keywords;  // the keys that the section takes

// Of the script.
FindNames DefinedWords;
FindNames Globals;
FindNames LocalValues;  // the values of the same ACTION; those of other sections are no operands
FindNames WordsAndOperands;  // what a number may be given by
FindNames GroupNames;
FindNames ActionNames;
FindNames TableNames;
FindNames PelmgroupIds;
FindNames SensorIds;

}  // namespace rux::advice

#endif  // ADVICE_NAMES_H_
