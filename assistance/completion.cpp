#include "assistance/completion.h"

#include "assistance/place.h"
#include "assistance/proposals.h"
#include "index/part_use.h"
#include "index/spot.h"

namespace rux::assistance {
namespace {

using index::Spot;
using index::Use;

void ProposeForPart(const Writing& writing, ProposalList& proposals) {
  const index::PartUse& use = writing.spot.use;
  if (use.reference != nullptr) ProposeReferents(writing, proposals);
  switch (use.use) {
    case Use::kNumber:
    case Use::kWord:
      return ProposeWords(writing, proposals);
    case Use::kType:
      return ProposeTypes(writing, proposals);
    case Use::kPath:
      return ProposePaths(writing, proposals);
    case Use::kField:
      return ProposeParts(writing, proposals);
    case Use::kText:
    case Use::kDropped:
      return;
  }
}

}  // namespace

Proposals ProposalsAt(const Place& at) {
  const Spot spot = index::SpotAt(at.index, at.file, at.offset);
  const Writing writing{at, at.index, spot};
  Proposals found;
  found.range = spot.text;
  switch (spot.kind) {
    case Spot::Kind::kHeader:
      ProposeSections(writing, found.proposals);
      break;
    case Spot::Kind::kKey:
      ProposeKeys(writing, found.proposals);
      if (spot.text.begin == spot.text.end) ProposeSections(writing, found.proposals);
      break;
    case Spot::Kind::kPart:
      ProposeForPart(writing, found.proposals);
      break;
    case Spot::Kind::kNothing:
      break;
  }
  return found;
}

}  // namespace rux::assistance
