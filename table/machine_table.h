// The sections of a kind as a table.
#ifndef TABLE_MACHINE_TABLE_H_
#define TABLE_MACHINE_TABLE_H_

#include <string>
#include <vector>

#include "machine/machine.h"
#include "ruxcomp/language/sections.h"
#include "table/cell.h"
#include "table/columns.h"

namespace rux::table {

struct Row {
  Subject subject;
  RowCells cells;
};

// The machine must outlive it.
struct MachineTable {
  const machine::Machine& machine;
  const language::SectionKind& kind;
  std::vector<Column> columns;
  std::vector<Row> rows;  // in the order of the machine
};

// The keywords of the kinds that have tables: those whose sections have NAMEs.
std::vector<std::string> KindNames();

// Takes time by the columns and the entries of all sections.
MachineTable MakeTable(const machine::Machine& machine, const language::SectionKind& kind,
                       std::vector<Column> columns);
// The same with the limits measured as those of another machine, which has the same sections.
MachineTable MakeTable(const machine::Machine& machine, const language::SectionKind& kind,
                       std::vector<Column> columns, const machine::Machine& measured);

// Takes out the columns in which all cells are empty. A table without rows keeps all.
void DropEmptyColumns(MachineTable& table);

}  // namespace rux::table

#endif  // TABLE_MACHINE_TABLE_H_
