// A machine as tables: the sensors as CSV, sections of all kinds as JSON.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "exports/account.h"
#include "exports/formats.h"
#include "losses/ledger.h"
#include "machine/machine.h"
#include "machine/value.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/records.h"
#include "support/json.h"
#include "support/text_stream.h"
#include "table/cell.h"
#include "table/columns.h"
#include "table/forms.h"
#include "table/machine_table.h"

namespace rux::exports {
namespace {

namespace language = ruxcomp::language;

// Accounts for the entries that the cells of a table show.
void AccountFor(const table::MachineTable& table, Account& account) {
  for (const table::Row& row : table.rows) {
    for (const table::PlacedCell& placed : row.cells) {
      const ruxcomp::Entry entry = table::EntryOf(row.subject, table.columns[placed.column]);
      if (!entry) continue;
      const std::string text = table::TextOf(placed.cell);
      const bool is_amount = table.columns[placed.column].is_limit() &&
                             text != std::to_string(placed.cell.number.value_or(0));
      if (is_amount) {
        account.Changed(row.subject.section, entry.identifier(), text, losses::Reason::kRewritten);
      } else {
        account.Used(row.subject.section, entry.identifier());
      }
    }
  }
}

// What the columns that are worked out show: of the groups of a sensor and the lists that have it.
void AccountForGroups(const machine::Machine& machine, Account& account) {
  for (const ruxcomp::Section sensor : machine.model().sections(RUX_SECT_SENSOR))
    account.Used(sensor, RUX_ENTRY_PARENT);
  for (const ruxcomp::Section list : machine.model().sections(RUX_SECT_PELMGROUP)) {
    account.Used(list, RUX_ENTRY_NAME);
    account.Used(list, RUX_ENTRY_SENSORS);
  }
}

// All that sections of the kind have in this machine, but for where they are.
std::vector<table::Column> AllColumns(const machine::Machine& machine,
                                      const language::SectionKind& kind) {
  std::vector<table::Column> columns;
  const auto add = [&](const std::string& name) {
    if (std::optional<table::Column> column = table::FindColumn(kind, name))
      columns.push_back(std::move(*column));
  };
  std::set<std::string> known = {table::kPlaceColumn, "properties"};
  for (const std::string& name : table::ColumnNames(kind)) {
    if (known.insert(name).second) add(name);
  }
  for (const ruxcomp::Section section : machine.model().sections(kind.compiled)) {
    for (const ruxcomp::Entry entry : section.entries()) {
      if (const std::string key = machine::KeyOf(section, entry); known.insert(key).second)
        add(key);
    }
  }
  return columns;
}

void WriteTable(const machine::Machine& machine, const language::SectionKind& kind,
                Account& account, support::JsonArray& tables) {
  table::MachineTable table = table::MakeTable(machine, kind, AllColumns(machine, kind));
  if (table.rows.empty()) return;
  table::DropEmptyColumns(table);
  AccountFor(table, account);
  const auto add_cells = [&](std::size_t row, support::JsonObject& json) {
    if (kind.compiled != RUX_SECT_TABLE) return;
    const auto ordinal = static_cast<std::uint32_t>(table.rows[row].subject.ordinal);
    if (const ruxcomp::TableCells* const cells = machine.model().table(ordinal))
      json.Array("cells", [&](support::JsonArray& list) { list.Items(*cells); });
  };
  tables.Object([&](support::JsonObject& json) {
    json.Member("kind", kind.keyword);
    table::WriteRows(table::SheetOf(table), json, add_cells);
  });
}

}  // namespace

void WriteCsv(const machine::Machine& machine, Account& account, support::TextStream& out) {
  const language::SectionKind& kind = language::KindOf(language::SECTION_SENSOR);
  table::MachineTable table = table::MakeTable(machine, kind, table::DefaultColumns(kind));
  table::DropEmptyColumns(table);
  AccountFor(table, account);
  AccountForGroups(machine, account);
  table::WriteCsv(table::SheetOf(table), out);
}

void WriteJson(const machine::Machine& machine, Account& account, support::TextStream& out) {
  support::WriteJson(out, [&](support::JsonObject& json) {
    json.Schema(1);
    json.Member("machine", machine.name());
    json.Array("tables", [&](support::JsonArray& tables) {
      for (const language::SectionKind& kind : language::kSectionKinds)
        WriteTable(machine, kind, account, tables);
    });
  });
}

}  // namespace rux::exports
