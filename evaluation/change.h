// A change that is tried out on a machine as if its file had it.
#ifndef EVALUATION_CHANGE_H_
#define EVALUATION_CHANGE_H_

#include <cstdint>
#include <tuple>

#include "evaluation/result.h"
#include "evaluation/target.h"
#include "ruxcomp/identifiers.h"

namespace rux::evaluation {

struct Change {
  // A limit, a calculation, or a cell: see CellKey().
  ValueKey where;
  // What is added to the limit or the cell; in place of the operator of a calculation, another.
  std::uint32_t number;

  static ValueKey CellKey(std::uint32_t table, std::uint32_t index) {
    return {RUX_SECT_TABLE, table, index};
  }
  // Null, or that of the change of this.
  static const Change* At(const Change* change, const ruxcomp::Section& section,
                          const ruxcomp::Entry& entry) {
    return change != nullptr && change->where == KeyOf(section, entry) ? change : nullptr;
  }
  // A cell as it is with the change, if there is one.
  static std::uint8_t CellAt(const Change* change, std::uint32_t table, std::uint32_t index,
                             std::uint8_t cell) {
    const bool is_it = change != nullptr && change->where == CellKey(table, index);
    return is_it ? static_cast<std::uint8_t>(cell + change->number) : cell;
  }
};

}  // namespace rux::evaluation

#endif  // EVALUATION_CHANGE_H_
