#include "table/machine_table.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "machine/machine.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "table/columns.h"

namespace rux::table {

std::vector<std::string> KindNames() {
  std::vector<std::string> names;
  for (const language::SectionKind& kind : language::kSectionKinds) {
    if (kind.HasNames()) names.emplace_back(kind.keyword);
  }
  return names;
}

MachineTable MakeTable(const machine::Machine& machine, const language::SectionKind& kind,
                       std::vector<Column> columns) {
  return MakeTable(machine, kind, std::move(columns), machine);
}

MachineTable MakeTable(const machine::Machine& machine, const language::SectionKind& kind,
                       std::vector<Column> columns, const machine::Machine& measured) {
  MachineTable table{machine, kind, std::move(columns), {}};
  const Lists lists(machine);
  const ruxcomp::Sections sections = measured.model().sections(kind.compiled);
  std::size_t ordinal = 0;
  for (const ruxcomp::Section section : machine.model().sections(kind.compiled)) {
    Row row{{machine, kind, section, ordinal, measured.QuantityOf(sections[ordinal])}, {}};
    ++ordinal;
    row.cells.reserve(table.columns.size());
    for (const Column& column : table.columns)
      row.cells.push_back(CellOf(row.subject, column, lists));
    table.rows.push_back(std::move(row));
  }
  return table;
}

void DropEmptyColumns(MachineTable& table) {
  if (table.rows.empty()) return;
  for (std::size_t i = table.columns.size(); i-- > 0;) {
    const bool is_used = std::any_of(table.rows.begin(), table.rows.end(),
                                     [&](const Row& row) { return !row.cells[i].empty(); });
    if (is_used) continue;
    const auto at = static_cast<std::ptrdiff_t>(i);
    table.columns.erase(table.columns.begin() + at);
    for (Row& row : table.rows) row.cells.erase(row.cells.begin() + at);
  }
}

}  // namespace rux::table
