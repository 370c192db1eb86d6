// What helps people to understand a message of the library.
#ifndef DIAGNOSTICS_ADVICE_H_
#define DIAGNOSTICS_ADVICE_H_

#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/locator.h"

namespace rux::diagnostics {

// The first part of a run's diagnostics gets advice; who has more of them starts there anyway.
// Looking for names takes time for each.
inline constexpr std::size_t kMostAdvised = 100;
// So many names are looked at for that; a script may have a million.
inline constexpr std::size_t kMostCompared = 3'000'000;

// Each takes one diagnostic that is located.
//
// What was probably meant by a name that does not exist. Returns how many names were looked at.
std::size_t AddSuggestion(Locator& locator, Diagnostic& diagnostic);
// The other place that the message is about, such as the first definition.
void AddOtherPlace(Locator& locator, Diagnostic& diagnostic);
// What the library's text leaves open.
void AddHint(Diagnostic& diagnostic);

void Advise(Locator& locator, std::vector<Diagnostic>& diagnostics);

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_ADVICE_H_
