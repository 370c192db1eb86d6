// Checks of numbers that several rules share.
#ifndef RULES_NUMBER_RULES_H_
#define RULES_NUMBER_RULES_H_

#include <string_view>

#include "rules/rule.h"

namespace rux::rules {

// `read` is what the library takes the text for.
void ReportTrailingText(const ScriptItem& item, std::string_view text, std::string_view read,
                        RuleReport& report);

}  // namespace rux::rules

#endif  // RULES_NUMBER_RULES_H_
