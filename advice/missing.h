// What findings miss: sections and entries that the scripts do not have.
#ifndef ADVICE_MISSING_H_
#define ADVICE_MISSING_H_

#include <optional>
#include <string>
#include <string_view>

#include "advice/message_advice.h"
#include "run/log.h"
#include "ruxcomp/language/entries.h"

namespace rux::advice {

struct Missing {
  Definition definition;
  std::string_view text;  // of the finding
};

// Nothing for a finding that does not miss anything.
std::optional<Missing> MissingOf(const run::Finding& finding);

bool AreInOneSection(const run::Finding& one, const run::Finding& other);

// The first text after the place and the names of section and entry; empty when there is none.
std::string_view Mentioned(const run::Finding& finding);

// A text of an entry, so that equal numbers are equal texts.
std::string Comparable(ruxcomp::language::EntryId entry, std::string_view text);

}  // namespace rux::advice

#endif  // ADVICE_MISSING_H_
