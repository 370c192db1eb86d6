// The tables of a meta file, for looking up what its words stand for.
#ifndef RUXCOMP_VERIFY_META_TABLES_H_
#define RUXCOMP_VERIFY_META_TABLES_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/file/views.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/seeded_hash.h"
#include "ruxcomp/verify/distinct.h"

namespace ruxcomp::verify {

class MetaTables {
 public:
  // Reports texts and numbers that cannot be where they are.
  void Take(file::Cursor& cursor, file::MetaTableView table) {
    CheckTexts(cursor, table);
    CheckNumbers(cursor, table);
    const bool has_numbers = table.base == language::CLASS_Dword;
    counts_[table.base >> language::kClassShift] =
        static_cast<std::uint32_t>(has_numbers ? table.numbers.size() : table.most_texts);
    places_[table.base >> language::kClassShift] = static_cast<std::uint8_t>(table.ordinal);
    tables_[table.ordinal] = std::move(table);
    ++taken_;
  }

  // Whether all of them could be read: what follows is for such tables.
  bool complete() const { return taken_ == tables_.size(); }

  // How many indices a class has, and what one of them stands for.
  std::uint32_t CountOf(std::uint32_t base) const { return counts_[base >> language::kClassShift]; }
  std::string_view TextOf(std::uint32_t index) const {
    const file::MetaTableView& table = TableOf(language::ClassOf(index));
    const std::size_t ordinal = language::OrdinalOf(index);
    return ordinal < table.ends.size() ? table.TextAt(ordinal) : "";
  }
  // The same as whether TextOf() of a string is empty, without a look at the table.
  bool IsEmptyString(std::uint32_t index) const {
    return !empty_strings_.empty() &&
           std::binary_search(empty_strings_.begin(), empty_strings_.end(), index);
  }
  std::uint32_t NumberOf(std::uint32_t index) const {
    return TableOf(language::CLASS_Dword).numbers[language::OrdinalOf(index)];
  }

  // Whether the word is an index of that class and in its table. Report() says why it is not.
  bool Has(std::uint32_t word, std::uint32_t base) const { return word - base < CountOf(base); }
  [[gnu::cold]] void Report(file::Cursor& cursor, const char* field, std::size_t offset,
                            std::uint32_t word, std::uint32_t base) const;

  const std::array<file::MetaTableView, language::kBlockCount>& all() const { return tables_; }
  const file::MetaTableView& cells() const { return tables_.back(); }

  // Of all tables together.
  std::size_t TextCount() const {
    std::size_t count = 0;
    for (const file::MetaTableView& table : tables_) count += table.ends.size();
    return count;
  }
  std::size_t NumberCount() const { return TableOf(language::CLASS_Dword).numbers.size(); }
  // What is odd about the names of properties, the only ones that can be.
  const std::string& note() const { return tables_.front().note; }

 private:
  static constexpr const char* TitleOf(std::uint32_t base) {
    return language::FindClass(base)->title;
  }
  // Whether the class is one of names of sections: no section has an empty one.
  static constexpr bool IsOfSections(std::uint32_t base) {
    const auto sources = language::KeySourcesOf(base);
    return sources.begin() != sources.end() && sources.begin()->is_text;
  }

  void CheckTexts(file::Cursor& cursor, const file::MetaTableView& table);
  static void CheckNumbers(file::Cursor& cursor, const file::MetaTableView& table);
  const file::MetaTableView& TableOf(std::uint32_t base) const {
    return tables_[places_[base >> language::kClassShift]];
  }

  std::array<file::MetaTableView, language::kBlockCount> tables_;
  std::array<std::uint32_t, 256> counts_ = {};  // by the top byte of the class
  std::array<std::uint8_t, 256> places_ = {};   // likewise: which of the tables it is
  std::vector<std::uint32_t> empty_strings_;    // one at most in a sound file
  std::size_t taken_ = 0;
};

inline void MetaTables::CheckTexts(file::Cursor& cursor, const file::MetaTableView& table) {
  const language::Rows<language::FixedKey> fixed = language::FixedKeysOf(table.base);
  if (table.ends.size() < fixed.size()) {
    cursor.Report("texts", table.length_offset + file::kWordSize,
                  "expected at least {1}, found {0}", table.ends.size(), fixed.size());
  }
  const detail::SeededHash hash;
  Distinct texts(table.ends.size());
  for (std::size_t i = 0; i < table.ends.size(); ++i) {
    const std::string_view text = table.TextAt(i);
    if (i < fixed.size() && text != fixed[i].text) {
      cursor.Report("text", table.OffsetOf(i), "number {} must be \"{}\"", i, fixed[i].text);
    }
    if (text.empty() && table.base == language::CLASS_String) {
      empty_strings_.push_back(static_cast<std::uint32_t>(table.base + i));
    }
    // Properties may have several indices without a name.
    if (text.empty() && table.base == language::CLASS_Property) continue;
    if (text.empty() && IsOfSections(table.base)) {
      cursor.Report("text", table.OffsetOf(i), "a name must not be empty");
    } else if (!texts.Insert(hash(text), static_cast<std::uint32_t>(i),
                             [&](std::size_t other) { return table.TextAt(other) == text; })) {
      cursor.Report("text", table.OffsetOf(i), "an earlier text is the same");
    }
  }
}

inline void MetaTables::CheckNumbers(file::Cursor& cursor, const file::MetaTableView& table) {
  const detail::SeededHash hash;
  Distinct numbers(table.numbers.size());
  for (std::size_t i = 0; i < table.numbers.size(); ++i) {
    const std::uint32_t number = table.numbers[i];
    const auto is_same = [&](std::size_t other) { return table.numbers[other] == number; };
    if (numbers.Insert(hash(number), static_cast<std::uint32_t>(i), is_same)) continue;
    cursor.Report("number", table.OffsetOf(i), "an earlier number is the same");
  }
}

inline void MetaTables::Report(file::Cursor& cursor, const char* field, std::size_t offset,
                               std::uint32_t word, std::uint32_t base) const {
  if (language::ClassOf(word) == base) {
    cursor.Report(field, offset, "it is {0} {1}, but the table has {2}", TitleOf(base),
                  language::OrdinalOf(word), CountOf(base));
  } else {
    cursor.Report(field, offset, "expected class 0x{1:02X} ({2}), found 0x{0:08X}", word,
                  base >> language::kClassShift, TitleOf(base));
  }
}

}  // namespace ruxcomp::verify

#endif  // RUXCOMP_VERIFY_META_TABLES_H_
