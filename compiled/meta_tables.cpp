#include "compiled/meta_tables.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "compiled/compiled_schema.h"
#include "compiled/index_class.h"
#include "compiled/text_set.h"

namespace rux::compiled {
namespace {

// The texts that a table has before all others.
std::pair<const char* const*, std::size_t> FixedTexts(std::uint32_t base) {
  if (base == RUX_CLASS_Value) return {kFixedValueNames, std::size(kFixedValueNames)};
  if (base == RUX_CLASS_Group) return {&kRootGroup, 1};
  return {nullptr, 0};
}

// Whether the class is one of names of sections: no section has an empty one.
bool IsOfSections(std::uint32_t base) {
  return base == RUX_CLASS_Group || base == RUX_CLASS_Action || base == RUX_CLASS_TableName;
}

}  // namespace

void MetaTables::Take(Cursor& cursor, MetaTableView table) {
  CheckTexts(cursor, table);
  CheckNumbers(cursor, table);
  const bool has_numbers = table.base == RUX_CLASS_Dword;
  counts_[table.base >> 24] =
      static_cast<std::uint32_t>(has_numbers ? table.numbers.size() : table.most_texts);
  tables_[table.ordinal] = std::move(table);
  ++taken_;
}

void MetaTables::CheckTexts(Cursor& cursor, const MetaTableView& table) {
  const auto [fixed, fixed_count] = FixedTexts(table.base);
  if (table.ends.size() < fixed_count) {
    cursor.Report("texts", table.length_offset + kWordSize, "there are {}, needed are {}",
                  table.ends.size(), fixed_count);
  }
  TextSet texts;
  texts.Reserve(table.ends.size());
  for (std::size_t i = 0; i < table.ends.size(); ++i) {
    const std::string_view text = table.TextAt(i);
    if (i < fixed_count && text != fixed[i]) {
      cursor.Report("text", table.OffsetOf(i), "number {} must be \"{}\"", i, fixed[i]);
    }
    // Properties may have several indices without a name.
    if (text.empty() && table.base == RUX_CLASS_Property) continue;
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
  const MetaTableView& table = TableOf(ClassOfIndex(index));
  const std::size_t ordinal = OrdinalOfIndex(index);
  return ordinal < table.ends.size() ? table.TextAt(ordinal) : "";
}

std::uint32_t MetaTables::NumberOf(std::uint32_t index) const {
  return TableOf(RUX_CLASS_Dword).numbers[OrdinalOfIndex(index)];
}

void MetaTables::Report(Cursor& cursor, const char* field, std::size_t offset, std::uint32_t word,
                        std::uint32_t base) const {
  if (ClassOfIndex(word) == base) {
    cursor.Report(field, offset, "it is {0} {1}, the table has {2}", IndexClassName(base),
                  OrdinalOfIndex(word), CountOf(base));
  } else {
    cursor.Report(field, offset, "it is 0x{:08X}, needed is one of class 0x{:02X} ({})", word,
                  base >> 24, IndexClassName(base));
  }
}

std::size_t MetaTables::TextCount() const {
  std::size_t count = 0;
  for (const MetaTableView& table : tables_) count += table.ends.size();
  return count;
}

const MetaTableView& MetaTables::TableOf(std::uint32_t base) const {
  const auto* const found = std::find(kTableClasses.begin(), kTableClasses.end(), base);
  return tables_[static_cast<std::size_t>(found - kTableClasses.begin())];
}

}  // namespace rux::compiled
