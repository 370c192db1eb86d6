// The columns that tables of sections may have: each key that a section of the kind takes, as a
// script writes it, and what is worked out.
#ifndef TABLE_COLUMNS_H_
#define TABLE_COLUMNS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "machine/machine.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "table/cell.h"

namespace rux::table {

namespace language = ruxcomp::language;

// Columns that others ask for.
inline constexpr std::string_view kNameColumn = language::KeywordOf(language::ENTRY_NAME);
inline constexpr std::string_view kIdColumn = language::KeywordOf(language::ENTRY_ID);
inline constexpr char kUnitColumn[] = "unit";    // of limits
inline constexpr char kPlaceColumn[] = "place";  // of the section in a script

// A section of a machine, with what several of its cells need.
struct Subject {
  const machine::Machine& machine;
  const language::SectionKind& kind;
  ruxcomp::Section section;
  std::size_t ordinal;
  machine::Quantity quantity;  // of its limits
};

class Lists;

// What is worked out.
struct DerivedColumn {
  const char* name;
  bool is_of_sensors;  // only they have it
  Cell (*cell)(const Subject& subject, const Lists& lists);
};

struct Column {
  std::string name;  // which heads it
  const DerivedColumn* derived = nullptr;
  // Of a key: the row of its entry; the identifier in the meta file of a fixed one, or the class
  // and the name of one of the script's own.
  const language::EntryRow* entry = nullptr;
  std::uint32_t identifier = 0;
  std::uint32_t entry_class = 0;
  std::string entry_name = {};

  bool is_limit() const {
    return entry != nullptr && language::FindLimit(entry->source) != nullptr;
  }
  // Whether the entry is a number of its section alone: not an ID, which others give.
  bool is_number() const;
  bool is_text() const;
};

// None when the kind does not have such a column. Case makes no difference, but in names of the
// script's own.
std::optional<Column> FindColumn(const language::SectionKind& kind, const std::string& name);
// The same; throws a Failure of wrong usage instead of none.
Column ColumnFor(const language::SectionKind& kind, const std::string& name);

// All that the kind has, but for names of the script's own.
std::vector<std::string> ColumnNames(const language::SectionKind& kind);

// The columns of a table of which none are named.
std::vector<Column> DefaultColumns(const language::SectionKind& kind);

// The entry that the column is about; none when the section does not have it.
ruxcomp::Entry EntryOf(const Subject& subject, const Column& column);

// Which PELMGROUPs list a sensor.
class Lists {
 public:
  explicit Lists(const machine::Machine& machine);

  // Their NAMEs.
  std::vector<std::string> With(std::uint32_t id) const;

 private:
  std::vector<std::pair<std::uint32_t, std::string>> members_;  // sorted by ID
};

Cell CellOf(const Subject& subject, const Column& column, const Lists& lists);
// The same of a column about a key, with its entry at hand.
Cell CellOf(const Subject& subject, const Column& column, const ruxcomp::Entry& entry);

}  // namespace rux::table

#endif  // TABLE_COLUMNS_H_
