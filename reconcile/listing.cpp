#include "reconcile/listing.h"

#include <string>
#include <utility>
#include <vector>

#include "lists/formats.h"
#include "lists/list.h"
#include "machine/machine.h"
#include "reconcile/compare.h"
#include "reconcile/pairing.h"
#include "ruxcomp/language/sections.h"
#include "table/columns.h"
#include "table/condition.h"
#include "table/machine_table.h"

namespace rux::reconcile {

Listing ReadListing(const ListingOptions& options, const ruxcomp::language::SectionKind& kind,
                    std::vector<table::Condition> conditions) {
  const std::string text = lists::ReadListFile(options.path);
  const lists::Format& format = lists::FormatFor(options.format, text);
  lists::List list = format.read(options.path, text);
  Pairing pairing = PairColumns(kind, format, options.path, list, options.pairing);
  return {kind, options.path, std::move(list), std::move(pairing), std::move(conditions)};
}

Comparison CompareWith(const machine::Machine& machine, const Listing& listing) {
  return CompareWith(machine, listing, machine);
}

Comparison CompareWith(const machine::Machine& machine, const Listing& listing,
                       const machine::Machine& measured) {
  std::vector<table::Column> columns;
  columns.reserve(listing.pairing.columns.size());
  for (const ColumnPair& pair : listing.pairing.columns) columns.push_back(pair.column);
  table::MachineTable table = table::MakeTable(machine, listing.kind, std::move(columns), measured);
  const std::vector<bool> is_chosen = table::FittingRows(listing.conditions, table);
  return Compare(std::move(table), is_chosen, listing.list, listing.pairing);
}

}  // namespace rux::reconcile
