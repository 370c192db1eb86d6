// Which column of a list is which of a machine's table, and how their cells are compared.
#ifndef RECONCILE_PAIRING_H_
#define RECONCILE_PAIRING_H_

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "lists/formats.h"
#include "lists/list.h"
#include "ruxcomp/language/sections.h"
#include "table/columns.h"

namespace rux::reconcile {

// What the user says of the columns. Those of tolerances and units may be patterns.
struct PairingOptions {
  std::vector<std::string> names;       // "OURS=THEIRS"
  std::vector<std::string> tolerances;  // "COLUMN=AMOUNT" or "COLUMN=PERCENT%"
  std::vector<std::string> units;       // "COLUMN=UNIT"
};

// By how much a number may be another one.
struct Tolerance {
  double amount = 0;  // in the unit of the machine
  double share = 0;   // of the machine's number
};

struct ColumnPair {
  table::Column column;
  std::size_t place;  // of the list's column
  std::string unit;   // of the list's column, when it says so
  Tolerance tolerance;
};

struct Pairing {
  std::vector<ColumnPair> columns;   // in the order of the list's columns
  std::vector<std::string> ignored;  // columns of the list that are not compared

  // The pair of that column of ours, and of the list's column at that place; null without one.
  const ColumnPair* Find(std::string_view name) const;
  const ColumnPair* FindPlace(std::size_t place) const;

  void Add(ColumnPair pair);

 private:
  std::map<std::string, std::size_t, std::less<>> by_name_;
};

// A column of a table that people keep is compared when it has our name, one of a program when its
// meaning is known; both when the user says so. Where sections are has no counterpart. Throws a
// Failure when the list has neither NAME nor ID, or two columns for one of ours; one of wrong usage
// for what makes no sense in the options.
Pairing PairColumns(const ruxcomp::language::SectionKind& kind, const lists::Format& format,
                    const std::string& path, const lists::List& list,
                    const PairingOptions& options);

}  // namespace rux::reconcile

#endif  // RECONCILE_PAIRING_H_
