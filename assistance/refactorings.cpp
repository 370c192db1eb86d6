#include "assistance/refactorings.h"

#include "assistance/place.h"

namespace rux::assistance {

Refactorings RefactoringsAt(const Place& at) {
  Refactorings refactorings;
  CompleteSection(at, refactorings);
  AddToLists(at, refactorings);
  ExtractWord(at, refactorings);
  return refactorings;
}

}  // namespace rux::assistance
