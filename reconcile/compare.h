// A machine compared with a list.
#ifndef RECONCILE_COMPARE_H_
#define RECONCILE_COMPARE_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "lists/list.h"
#include "machine/machine.h"
#include "machine/place.h"
#include "reconcile/pairing.h"
#include "table/cell.h"
#include "table/machine_table.h"

namespace rux::reconcile {

enum class DifferenceKind : std::uint8_t {
  kDiffers,       // a cell of both
  kIncomparable,  // a cell of the list without a number where ours is one, or in another unit
  kMissing,       // a row of the list that the machine does not have
  kExtra,         // a section that the list does not have
  kDuplicate,     // a further row for a section
};
inline constexpr std::string_view kDifferenceWords[] = {"differs", "incomparable", "missing",
                                                        "extra", "duplicate"};
inline constexpr std::size_t kDifferenceCount = sizeof kDifferenceWords / sizeof *kDifferenceWords;

struct Difference {
  DifferenceKind kind;
  const table::Row* row = nullptr;         // of the machine's table; null: missing
  const lists::ListRow* listed = nullptr;  // null: extra
  std::string name;                        // of either
  std::optional<std::uint32_t> id;
  const ColumnPair* column = nullptr;  // of a cell; null: the row
  table::Cell ours = {};
  std::string theirs = {};
  std::optional<machine::Place> place = {};  // of the entry or section, where that is known

  bool is_of_limit() const { return column != nullptr && column->column.is_limit(); }
};

struct Comparison {
  table::MachineTable table;
  const lists::List& list;
  const Pairing& pairing;
  std::vector<bool> are_chosen;         // of the table's rows, which are compared
  std::vector<Difference> differences;  // by the rows of the list, then what it does not have
  // Rows of the table in which what limits are numbers of stays, as some of their limits stay.
  std::set<std::size_t> held = {};
  std::size_t compared = 0;  // sections that the list has
  std::size_t stored = 0;    // of these, with limits whose unit or sign the project does not state
  std::vector<std::string> unlisted = {};  // limits of chosen sections, of which it has no column

  std::size_t CountOf(DifferenceKind kind) const;
};

// Sections and rows match by NAME, then by ID. The table has the columns of the pairing. Only the
// differences of chosen rows (a flag for each of the table's) are in the result. List and
// pairing must outlive it.
Comparison Compare(table::MachineTable table, std::vector<bool> are_chosen, const lists::List& list,
                   const Pairing& pairing);

// What a number of a section is a number of, in that column.
machine::Quantity QuantityFor(const ColumnPair& pair, const table::Row& row);

// What the list measures in, in that column and row; empty: it does not say.
std::string UnitOf(const Comparison& comparison, const ColumnPair& pair,
                   const lists::ListRow& listed);

}  // namespace rux::reconcile

#endif  // RECONCILE_COMPARE_H_
