// What is known of single messages, beside their rows.
#ifndef ADVICE_FACTS_H_
#define ADVICE_FACTS_H_

#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "sources/source_set.h"

namespace rux::advice {

// What is underlined of the place that a finding names.
enum class Underline {
  kPlace,        // the part, the key or the header itself
  kToLastPart,   // the part and those after it
  kHeader,       // the header of the section that it is in
  kSectionName,  // the name in the header
};

using Names = std::vector<std::string>;

struct Facts {
  const findings::MessageRow* row = nullptr;
  Underline underline = Underline::kPlace;
  const char* other = nullptr;  // what the other place is

  // The names to suggest from, and what all of them begin with: nothing that they are alike in.
  Names (*names)(const sources::SourceSet& sources,
                 const diagnostics::Diagnostic& diagnostic) = nullptr;
  std::string_view prefix = {};

  // A sentence for where the text leaves something open.
  bool (*needs_hint)(const diagnostics::Diagnostic& diagnostic) = nullptr;
  const char* hint = nullptr;
};

// Of a message that has no row, all is as above.
const Facts& FactsOf(const findings::MessageRow* row);

// What keys must be like that are none of the language's, in sections of a kind; empty for others.
std::string KeyRuleOf(std::string_view section);

}  // namespace rux::advice

#endif  // ADVICE_FACTS_H_
