#include "reconcile/listing.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "lists/formats.h"
#include "lists/list.h"
#include "machine/machine.h"
#include "machine/value.h"
#include "reconcile/compare.h"
#include "reconcile/pairing.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "support/failure.h"
#include "support/nearest.h"
#include "table/columns.h"
#include "table/condition.h"
#include "table/machine_table.h"

namespace rux::reconcile {
namespace {

table::MachineTable TableFor(const Listing& listing, const machine::Machine& machine,
                             const machine::Machine& measured) {
  std::vector<table::Column> columns;
  columns.reserve(listing.pairing.columns.size());
  for (const ColumnPair& pair : listing.pairing.columns) columns.push_back(pair.column);
  return table::MakeTable(machine, listing.kind, std::move(columns), measured);
}

// The keys of all sections in the table.
std::vector<std::string> KeysIn(const table::MachineTable& table) {
  std::set<std::string> keys;
  for (const table::Row& row : table.rows) {
    for (const ruxcomp::Entry entry : row.subject.section.entries())
      keys.insert(machine::KeyOf(row.subject.section, entry));
  }
  return {keys.begin(), keys.end()};
}

// A name of the script's own that no section has is a mistake.
void ExpectChosen(const Listing& listing, const table::MachineTable& table,
                  const std::vector<bool>& are_chosen) {
  using support::ExitStatus;
  using support::Failure;
  if (std::find(are_chosen.begin(), are_chosen.end(), true) != are_chosen.end()) return;
  if (listing.conditions.empty()) return;
  const std::vector<std::string> keys = KeysIn(table);
  for (const table::Condition& condition : listing.conditions) {
    const std::string& name = condition.column().name;
    if (condition.column().entry_class == 0) continue;
    if (std::find(keys.begin(), keys.end(), name) != keys.end()) continue;
    throw Failure(ExitStatus::kWrongUsage, "--where: no {} has {}{}", listing.kind.keyword, name,
                  support::NearText(name, keys, "--columns properties shows those of each"));
  }
  throw Failure(ExitStatus::kWrongUsage, "--where selects no {}", listing.kind.keyword);
}

}  // namespace

Listing ReadListing(const ListingOptions& options, const ruxcomp::language::SectionKind& kind,
                    std::vector<table::Condition> conditions) {
  const std::string text = lists::ReadListFile(options.path);
  const lists::Format& format = lists::FormatFor(options.format, text);
  lists::List list = format.read(options.path, text);
  Pairing pairing = PairColumns(kind, format, options.path, list, options.pairing);
  return {kind, options.path, std::move(list), std::move(pairing), std::move(conditions)};
}

Comparison CompareWith(const machine::Machine& machine, const Listing& listing) {
  table::MachineTable table = TableFor(listing, machine, machine);
  std::vector<bool> are_chosen = table::FittingRows(listing.conditions, table);
  ExpectChosen(listing, table, are_chosen);
  return Compare(std::move(table), std::move(are_chosen), listing.list, listing.pairing);
}

Comparison CompareChosen(const machine::Machine& machine, const Listing& listing,
                         const machine::Machine& measured, std::vector<bool> are_chosen) {
  return Compare(TableFor(listing, machine, measured), std::move(are_chosen), listing.list,
                 listing.pairing);
}

}  // namespace rux::reconcile
