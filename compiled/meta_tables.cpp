#include "compiled/meta_tables.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "compiled/text_set.h"
#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/file/views.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/hash_index.h"

namespace rux::compiled {
namespace {

using language::ClassOf;
using language::OrdinalOf;

const char* TitleOf(std::uint32_t base) { return language::FindClass(base)->title; }

// Whether the class is one of names of sections: no section has an empty one.
bool IsOfSections(std::uint32_t base) {
  const auto sources = language::KeySourcesOf(base);
  return sources.begin() != sources.end() && sources.begin()->is_text;
}

}  // namespace

void MetaTables::Take(Cursor& cursor, MetaTableView table) {
  CheckTexts(cursor, table);
  CheckNumbers(cursor, table);
  const bool has_numbers = table.base == language::CLASS_Dword;
  counts_[table.base >> language::kClassShift] =
      static_cast<std::uint32_t>(has_numbers ? table.numbers.size() : table.most_texts);
  places_[table.base >> language::kClassShift] = static_cast<std::uint8_t>(table.ordinal);
  tables_[table.ordinal] = std::move(table);
  ++taken_;
}

void MetaTables::CheckTexts(Cursor& cursor, const MetaTableView& table) {
  const language::Rows<language::FixedKey> fixed = language::FixedKeysOf(table.base);
  if (table.ends.size() < fixed.size()) {
    cursor.Report("texts", table.length_offset + kWordSize, "there are {}, needed are {}",
                  table.ends.size(), fixed.size());
  }
  TextSet texts;
  texts.Reserve(table.ends.size());
  for (std::size_t i = 0; i < table.ends.size(); ++i) {
    const std::string_view text = table.TextAt(i);
    if (i < fixed.size() && text != fixed[i].text) {
      cursor.Report("text", table.OffsetOf(i), "number {} must be \"{}\"", i, fixed[i].text);
    }
    // Properties may have several indices without a name.
    if (text.empty() && table.base == language::CLASS_Property) continue;
    if (text.empty() && IsOfSections(table.base)) {
      cursor.Report("text", table.OffsetOf(i), "a name must not be empty");
    } else if (!texts.Insert(text)) {
      cursor.Report("text", table.OffsetOf(i), "there is the same text before it");
    }
  }
}

void MetaTables::CheckNumbers(Cursor& cursor, const MetaTableView& table) {
  ruxcomp::detail::HashIndex<ruxcomp::detail::NumberKey> numbers;
  numbers.Reserve(table.numbers.size());
  for (std::size_t i = 0; i < table.numbers.size(); ++i) {
    if (numbers.Add(0, table.numbers[i], 0)) continue;
    cursor.Report("number", table.OffsetOf(i), "there is the same number before it");
  }
}

std::string_view MetaTables::TextOf(std::uint32_t index) const {
  const MetaTableView& table = TableOf(ClassOf(index));
  const std::size_t ordinal = OrdinalOf(index);
  return ordinal < table.ends.size() ? table.TextAt(ordinal) : "";
}

std::uint32_t MetaTables::NumberOf(std::uint32_t index) const {
  return TableOf(language::CLASS_Dword).numbers[OrdinalOf(index)];
}

void MetaTables::Report(Cursor& cursor, const char* field, std::size_t offset, std::uint32_t word,
                        std::uint32_t base) const {
  if (ClassOf(word) == base) {
    cursor.Report(field, offset, "it is {0} {1}, the table has {2}", TitleOf(base), OrdinalOf(word),
                  CountOf(base));
  } else {
    cursor.Report(field, offset, "it is 0x{:08X}, needed is one of class 0x{:02X} ({})", word,
                  base >> language::kClassShift, TitleOf(base));
  }
}

std::size_t MetaTables::TextCount() const {
  std::size_t count = 0;
  for (const MetaTableView& table : tables_) count += table.ends.size();
  return count;
}

const MetaTableView& MetaTables::TableOf(std::uint32_t base) const {
  return tables_[places_[base >> language::kClassShift]];
}

}  // namespace rux::compiled
