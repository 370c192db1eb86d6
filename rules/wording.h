// The texts of warnings that the rules report in place of the library, from the wordings of their
// messages.
#ifndef RULES_WORDING_H_
#define RULES_WORDING_H_

#include <initializer_list>
#include <string>
#include <string_view>

#include "findings/message_row.h"
#include "ruxcomp/language/values.h"

namespace rux::rules {

// How many parts a value of the type takes, and which: "4 parts (type, operator, operand1,
// operand2)".
std::string PartsText(const ruxcomp::language::ValueType& type);

// A name of the language as people say it: "base address" for BaseAddress.
std::string InWords(std::string_view name);

// What a wording names, and what is filled in for it.
struct Fact {
  std::string_view name;
  std::string text;
};

// The wording of the message with all that it names.
std::string Worded(const ruxcomp::findings::MessageRow& row, std::initializer_list<Fact> facts);

}  // namespace rux::rules

#endif  // RULES_WORDING_H_
