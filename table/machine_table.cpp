#include "table/machine_table.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "machine/machine.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/handles.h"
#include "table/cell.h"
#include "table/columns.h"

namespace rux::table {
namespace {

// The cells of sections. Columns that any section may have are few; of the script's own names, a
// section has few.
class CellFinder {
 public:
  CellFinder(const machine::Machine& machine, const std::vector<Column>& columns)
      : columns_(columns), lists_(machine) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (columns[i].entry_class == 0) {
        common_.push_back(i);
      } else {
        own_[{columns[i].entry_class, columns[i].entry_name}].push_back(i);
      }
    }
  }

  RowCells CellsOf(const Subject& subject) const {
    RowCells cells;
    for (const std::size_t i : common_) {
      Cell cell = CellOf(subject, columns_[i], lists_);
      if (!cell.empty()) cells.push_back({i, std::move(cell)});
    }
    if (own_.empty()) return cells;
    for (const ruxcomp::Entry entry : subject.section.entries()) AddOwn(subject, entry, cells);
    // Of several entries with a key, the first one counts.
    std::stable_sort(cells.begin(), cells.end(),
                     [](const auto& a, const auto& b) { return a.column < b.column; });
    const auto is_same = [](const auto& a, const auto& b) { return a.column == b.column; };
    cells.erase(std::unique(cells.begin(), cells.end(), is_same), cells.end());
    return cells;
  }

 private:
  void AddOwn(const Subject& subject, const ruxcomp::Entry& entry, RowCells& cells) const {
    const auto found = own_.find({language::ClassOf(entry.identifier()), entry.name()});
    if (found == own_.end()) return;
    for (const std::size_t i : found->second) {
      Cell cell = CellOf(subject, columns_[i], entry);
      if (!cell.empty()) cells.push_back({i, std::move(cell)});
    }
  }

  const std::vector<Column>& columns_;
  const Lists lists_;
  std::vector<std::size_t> common_;
  // By the class and the name of the entry.
  std::map<std::pair<std::uint32_t, std::string_view>, std::vector<std::size_t>> own_;
};

}  // namespace

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
  const CellFinder finder(machine, table.columns);
  const ruxcomp::Sections sections = measured.model().sections(kind.compiled);
  std::size_t ordinal = 0;
  for (const ruxcomp::Section section : machine.model().sections(kind.compiled)) {
    Row row{{machine, kind, section, ordinal, measured.QuantityOf(sections[ordinal])}, {}};
    ++ordinal;
    row.cells = finder.CellsOf(row.subject);
    table.rows.push_back(std::move(row));
  }
  return table;
}

void DropEmptyColumns(MachineTable& table) {
  if (table.rows.empty()) return;
  constexpr auto kUnused = static_cast<std::size_t>(-1);
  std::vector<std::size_t> places(table.columns.size(), kUnused);
  for (const Row& row : table.rows) {
    for (const PlacedCell& cell : row.cells) places[cell.column] = cell.column;
  }
  std::vector<Column> used;
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (places[i] == kUnused) continue;
    places[i] = used.size();
    used.push_back(std::move(table.columns[i]));
  }
  table.columns = std::move(used);
  for (Row& row : table.rows) {
    for (PlacedCell& cell : row.cells) cell.column = places[cell.column];
  }
}

}  // namespace rux::table
