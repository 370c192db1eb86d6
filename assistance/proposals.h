// The kinds of proposals, each for the part of an item that is of its use.
#ifndef ASSISTANCE_PROPOSALS_H_
#define ASSISTANCE_PROPOSALS_H_

#include <vector>

#include "assistance/completion.h"
#include "assistance/place.h"
#include "index/index.h"
#include "index/spot.h"

namespace rux::assistance {

using ProposalList = std::vector<Proposal>;

// What is being written: where, and the place in the index.
struct Writing {
  const Place& at;
  const index::Index& index;
  const index::Spot& spot;
};

// Section headers; keys, those first that the section lacks.
void ProposeSections(const Writing& writing, ProposalList& proposals);
void ProposeKeys(const Writing& writing, ProposalList& proposals);
// Types of values, with their parts; first those that have been used as types.
void ProposeTypes(const Writing& writing, ProposalList& proposals);
void ProposeWords(const Writing& writing, ProposalList& proposals);
// What an entry refers to: names, or IDs with their names.
void ProposeReferents(const Writing& writing, ProposalList& proposals);
// What a part of a value or repeater may be, by its role.
void ProposeParts(const Writing& writing, ProposalList& proposals);
// Files and folders that an INCLUDE can name.
void ProposePaths(const Writing& writing, ProposalList& proposals);

}  // namespace rux::assistance

#endif  // ASSISTANCE_PROPOSALS_H_
