// Entering numbers and texts into the symbol tables while a model is compiled.
#ifndef BACKEND_INTERNER_H_
#define BACKEND_INTERNER_H_

#include <array>
#include <cstdint>
#include <string>

#include "backend/symbol_tables.h"

// A table and the place in it that was asked for last: the texts of a script mostly repeat or
// follow each other in order, so that the next one is there or beside it.
class TableCursor {
 public:
  explicit TableCursor(StringTable& table) : table_(table), last_(table.end()) {}

  // The index of a text. One that the table does not have is added with the index 0.
  std::uint32_t& operator[](const std::string& text) {
    last_ = table_.try_emplace(last_, text, 0);
    return last_->second;
  }

 private:
  StringTable& table_;
  StringTable::iterator last_;
};

// While one lives, nothing else changes the tables.
class Interner {
 public:
  // The index of a number or text, which gets one when it is new.
  std::uint32_t Number(std::uint32_t number) {
    Recent& recent = recent_[number % kRecent];
    if (recent.index == 0 || recent.number != number) {
      recent = {number, InsertTbl(g_tblDword, g_idxDword, number, 1)};
    }
    return recent.index;
  }
  std::uint32_t Text(const std::string& text) {
    std::uint32_t& index = texts_[text];
    if (index == 0) index = g_idxString++;
    return index;
  }

  // Indices of names; 0 for one that is not in the table, which is added without an index.
  TableCursor groups{g_tblGroup};
  TableCursor actions{g_tblAction};

 private:
  struct Recent {
    std::uint32_t number;
    std::uint32_t index;
  };
  static constexpr std::size_t kRecent = 1024;  // a model's settings are few, beside its IDs

  std::array<Recent, kRecent> recent_{};
  TableCursor texts_{g_tblString};
};

#endif  // BACKEND_INTERNER_H_
