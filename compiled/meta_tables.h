// The tables of a meta file, for looking up what its words stand for.
#ifndef COMPILED_META_TABLES_H_
#define COMPILED_META_TABLES_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "compiled/file.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/language/symbols.h"

namespace rux::compiled {

class MetaTables {
 public:
  // Reports texts and numbers that cannot stand where they do.
  void Take(Cursor& cursor, MetaTableView table);

  // Whether all of them could be read: what follows is for such tables.
  bool complete() const { return taken_ == tables_.size(); }

  // How many indices a class has, and what one of them stands for.
  std::uint32_t CountOf(std::uint32_t base) const { return counts_[base >> language::kClassShift]; }
  std::string_view TextOf(std::uint32_t index) const;
  std::uint32_t NumberOf(std::uint32_t index) const;

  // Whether the word is an index of that class and in its table; reports otherwise.
  bool Check(Cursor& cursor, const char* field, std::size_t offset, std::uint32_t word,
             std::uint32_t base) const {
    if (word - base < CountOf(base)) return true;
    Report(cursor, field, offset, word, base);
    return false;
  }

  const MetaTableView& cells() const { return tables_.back(); }

  // Of all tables together.
  std::size_t TextCount() const;
  std::size_t NumberCount() const { return TableOf(language::CLASS_Dword).numbers.size(); }
  // What is odd about the names of properties, the only ones that can be.
  const std::string& note() const { return tables_.front().note; }

 private:
  void CheckTexts(Cursor& cursor, const MetaTableView& table);
  void CheckNumbers(Cursor& cursor, const MetaTableView& table);
  void Report(Cursor& cursor, const char* field, std::size_t offset, std::uint32_t word,
              std::uint32_t base) const;
  const MetaTableView& TableOf(std::uint32_t base) const;

  std::array<MetaTableView, language::kBlockCount> tables_;
  std::array<std::uint32_t, 256> counts_ = {};  // by the top byte of the class
  std::array<std::uint8_t, 256> places_ = {};   // likewise: which of the tables it is
  std::size_t taken_ = 0;
};

}  // namespace rux::compiled

#endif  // COMPILED_META_TABLES_H_
