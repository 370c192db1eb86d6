// Changes that an editor offers at a place though nothing is wrong there.
#ifndef ASSISTANCE_REFACTORINGS_H_
#define ASSISTANCE_REFACTORINGS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "assistance/edit.h"
#include "assistance/place.h"

namespace rux::assistance {

struct Refactoring {
  enum class Kind : std::uint8_t {
    kComplete,  // also mends that required entries are missing
    kRewrite,
    kExtract,
  };

  Kind kind;
  std::string title;
  std::vector<Edit> edits;
};
using Refactorings = std::vector<Refactoring>;

// Entries that the section lacks: those that its kind requires, and those that at least half of the
// others of its kind in the machine have. What follows the '=' is left to write.
void CompleteSection(const Place& at, Refactorings& refactorings);
// At the header, NAME or ID of a section: its ID put into each list of such IDs that lacks it; into
// the first ones of very many.
void AddToLists(const Place& at, Refactorings& refactorings);
// At a number: a word in a DEFINE section of the file instead. What is compiled stays the same.
void ExtractWord(const Place& at, Refactorings& refactorings);

// All of these.
Refactorings RefactoringsAt(const Place& at);

}  // namespace rux::assistance

#endif  // ASSISTANCE_REFACTORINGS_H_
