// A list as it is compared with machines.
#ifndef RECONCILE_LISTING_H_
#define RECONCILE_LISTING_H_

#include <string>
#include <vector>

#include "lists/list.h"
#include "machine/machine.h"
#include "reconcile/compare.h"
#include "reconcile/pairing.h"
#include "ruxcomp/language/sections.h"
#include "table/condition.h"

namespace rux::reconcile {

struct ListingOptions {
  std::string path;    // "-": standard input
  std::string format;  // empty: to be recognised
  PairingOptions pairing;
};

struct Listing {
  const ruxcomp::language::SectionKind& kind;
  std::string path;
  lists::List list;
  Pairing pairing;
  std::vector<table::Condition> conditions;  // for the sections that are compared
};

// Throws a Failure.
Listing ReadListing(const ListingOptions& options, const ruxcomp::language::SectionKind& kind,
                    std::vector<table::Condition> conditions);

// Both must outlive the comparison. Throws a Failure of wrong usage when the conditions fit no
// section.
Comparison CompareWith(const machine::Machine& machine, const Listing& listing);
// The sections that were chosen once, of a machine that has the same sections, with the limits
// measured as those of `measured`, which has them as well.
Comparison CompareChosen(const machine::Machine& machine, const Listing& listing,
                         const machine::Machine& measured, std::vector<bool> are_chosen);

}  // namespace rux::reconcile

#endif  // RECONCILE_LISTING_H_
