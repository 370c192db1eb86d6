#include "table/columns.h"

#include <fmt/format.h>
#include <strings.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiled/datum.h"
#include "inspect/entry_value.h"
#include "machine/groups.h"
#include "machine/machine.h"
#include "machine/place.h"
#include "machine/value.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/compiled_entries.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "support/failure.h"
#include "support/nearest.h"
#include "support/safe_text.h"
#include "table/cell.h"

namespace rux::table {
namespace {

constexpr char kGroupColumn[] = "group";
constexpr char kListsColumn[] = "lists";
// The columns of a table of which none are named, in this order, as far as the kind has them.
constexpr std::string_view kDefaultColumns[] = {
    kNameColumn,
    kIdColumn,
    language::KeywordOf(language::ENTRY_PID),
    language::KeywordOf(language::ENTRY_TYPE),
    language::KeywordOf(language::ENTRY_ARGNUMBER),
    kGroupColumn,
    kListsColumn,
    language::KeywordOf(language::ENTRY_SENSORS),
    language::KeywordOf(language::ENTRY_THRESHOLD_FL),
    language::KeywordOf(language::ENTRY_THRESHOLD_WL),
    language::KeywordOf(language::ENTRY_THRESHOLD_WH),
    language::KeywordOf(language::ENTRY_THRESHOLD_FH),
    kUnitColumn,
    language::KeywordOf(language::ENTRY_VALUE),
    kPlaceColumn,
};

Cell GroupPath(const Subject& subject, const Lists&) {
  std::vector<std::string> names = machine::GroupsOf(subject.section);
  if (names.empty()) return {};
  for (std::string& name : names) name = support::NameInPath(name);
  return TextCell(fmt::to_string(fmt::join(names, "/")));
}

Cell ListsOf(const Subject& subject, const Lists& lists) {
  const std::optional<std::uint32_t> id = subject.section.id();
  return ListCell(id ? lists.With(*id) : std::vector<std::string>());
}

Cell UnitOf(const Subject& subject, const Lists&) {
  return subject.quantity.unit ? TextCell(*subject.quantity.unit) : Cell();
}

Cell PropertiesOf(const Subject& subject, const Lists&) {
  std::vector<std::string> properties;
  for (const ruxcomp::Entry entry : subject.section.entries()) {
    if (language::ClassOf(entry.identifier()) != language::CLASS_Property) continue;
    properties.push_back(fmt::format("{}={}", entry.name(), entry.value().text()));
  }
  return ListCell(std::move(properties));
}

Cell PlaceOf(const Subject& subject, const Lists&) {
  const auto place = subject.machine.PlaceOf(subject.kind, subject.ordinal);
  return place ? TextCell(place->Text()) : Cell();
}

// What is worked out.
constexpr DerivedColumn kDerivedColumns[] = {{kGroupColumn, false, GroupPath},
                                             {kListsColumn, true, ListsOf},
                                             {kUnitColumn, true, UnitOf},
                                             {"properties", false, PropertiesOf},
                                             {kPlaceColumn, false, PlaceOf}};

// The row of the entry that a key makes in sections of the kind; null when it makes none.
const language::EntryRow* FreeEntryFor(const language::SectionKind& kind, std::string_view key) {
  for (const language::FreeEntryRule& rule : kind.free_entries) {
    const language::EntryRow* row = language::FindEntryRow(rule.identifier);
    const std::string_view prefix = rule.prefix.empty() ? row->prefix : rule.prefix;
    if (row->table != 0 && language::HasPrefix(key, prefix)) return row;
  }
  return nullptr;
}

Column FixedColumn(const language::EntryTemplate& row, const language::CompiledEntry& compiled) {
  Column column{compiled.keyword};
  column.entry = language::FindEntryRow(row.identifier);
  column.identifier = compiled.identifier;
  return column;
}

Cell NumberCell(std::string text, std::uint32_t number) {
  Cell cell = TextCell(std::move(text));
  cell.number = number;
  return cell;
}

// The name that a part of a list gives, as scripts write it.
std::string ItemText(const compiled::Datum& datum, bool is_id) {
  if (datum.row == nullptr) return "(unresolved)";
  if (!datum.IsNumber()) return datum.text;
  return fmt::format(is_id ? "0x{:X}" : "{}", datum.number);
}

}  // namespace

bool Column::is_number() const {
  return entry != nullptr && language::IsNumericString(entry->source) &&
         entry->source != language::ENTRY_ID;
}

bool Column::is_text() const {
  return entry != nullptr && entry->payload == language::EntryPayload::kText;
}

std::optional<Column> FindColumn(const language::SectionKind& kind, const std::string& name) {
  const auto is_name = [&](const char* other) { return strcasecmp(other, name.c_str()) == 0; };
  for (const DerivedColumn& derived : kDerivedColumns) {
    const bool kind_has_it = !derived.is_of_sensors || kind.source == language::SECTION_SENSOR;
    if (is_name(derived.name) && kind_has_it) return Column{derived.name, &derived};
  }
  const language::CompiledEntry* compiled = language::CompiledEntriesOf(kind).begin();
  for (const language::EntryTemplate& row : kind.templates) {
    if (is_name(compiled->keyword)) return FixedColumn(row, *compiled);
    ++compiled;
  }
  const language::EntryRow* row = FreeEntryFor(kind, name);
  if (row == nullptr) return std::nullopt;
  Column column{name};
  column.entry = row;
  column.entry_class = row->table;
  column.entry_name = language::NameInKey(*row, name);
  return column;
}

std::vector<std::string> ColumnNames(const language::SectionKind& kind) {
  std::vector<std::string> names;
  for (const language::CompiledEntry& entry : language::CompiledEntriesOf(kind))
    names.emplace_back(entry.keyword);
  for (const DerivedColumn& derived : kDerivedColumns) {
    if (FindColumn(kind, derived.name)) names.emplace_back(derived.name);
  }
  return names;
}

Column ColumnFor(const language::SectionKind& kind, const std::string& name) {
  std::optional<Column> column = FindColumn(kind, name);
  if (column) return std::move(*column);
  std::vector<std::string> names = ColumnNames(kind);
  std::string capitals = name;
  for (char& c : capitals) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  if (FreeEntryFor(kind, capitals) != nullptr) names = {capitals};
  throw support::Failure(support::ExitStatus::kWrongUsage, "a table of {} has no column {}{}",
                         kind.keyword, support::NameText(name),
                         support::NearText(name, names, "rux help table describes them"));
}

std::vector<Column> DefaultColumns(const language::SectionKind& kind) {
  std::vector<Column> columns;
  for (const std::string_view name : kDefaultColumns) {
    if (std::optional<Column> column = FindColumn(kind, std::string(name)))
      columns.push_back(std::move(*column));
  }
  return columns;
}

ruxcomp::Entry EntryOf(const Subject& subject, const Column& column) {
  if (column.identifier != 0) return subject.section.entry(column.identifier);
  for (const ruxcomp::Entry entry : subject.section.entries()) {
    const bool is_of_class = language::ClassOf(entry.identifier()) == column.entry_class;
    if (is_of_class && entry.name() == column.entry_name) return entry;
  }
  return {};
}

Lists::Lists(const machine::Machine& machine) {
  for (const ruxcomp::Section list : machine.model().sections(RUX_SECT_PELMGROUP)) {
    for (const ruxcomp::Value id : list.entry(RUX_ENTRY_SENSORS).values())
      members_.emplace_back(id.number(), list.name());
  }
  std::stable_sort(members_.begin(), members_.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
}

std::vector<std::string> Lists::With(std::uint32_t id) const {
  std::vector<std::string> names;
  const auto first = std::lower_bound(
      members_.begin(), members_.end(), id,
      [](const auto& member, std::uint32_t wanted) { return member.first < wanted; });
  for (auto at = first; at != members_.end() && at->first == id; ++at) names.push_back(at->second);
  return names;
}

Cell CellOf(const Subject& subject, const Column& column, const Lists& lists) {
  if (column.derived != nullptr) return column.derived->cell(subject, lists);
  return CellOf(subject, column, EntryOf(subject, column));
}

Cell CellOf(const Subject& subject, const Column& column, const ruxcomp::Entry& entry) {
  if (!entry) return {};
  const machine::EntryValue value = machine::ValueOf(entry);
  const bool is_plain = !value.type && value.parts.size() == 1 && value.parts.front().name.empty();
  if (!is_plain) return TextCell(inspect::ValueText(value));
  const machine::EntryPart& part = value.parts.front();
  const bool is_id = column.entry->source == language::ENTRY_ID ||
                     machine::KindOfIds(subject.kind.source, column.entry->source) != nullptr;
  if (part.items.size() == 1 && part.items.front().IsNumber() && !part.is_list) {
    const std::uint32_t number = part.items.front().number;
    return NumberCell(column.is_limit() ? subject.quantity.AmountText(number)
                                        : ItemText(part.items.front(), is_id),
                      number);
  }
  std::vector<std::string> texts;
  texts.reserve(part.items.size());
  for (const compiled::Datum& item : part.items) texts.push_back(ItemText(item, is_id));
  return part.is_list ? ListCell(std::move(texts)) : Cell{std::move(texts), std::nullopt, false};
}

}  // namespace rux::table
