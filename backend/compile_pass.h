// Turning the checked source model into compiled records, and writing and reading these.
#ifndef BACKEND_COMPILE_PASS_H_
#define BACKEND_COMPILE_PASS_H_

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "backend/symbol_tables.h"
#include "checker/value_fields.h"
#include "frontend/section.h"
#include "ruxcomp/records.h"

namespace ruxcomp::core {

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

// Enters numbers and texts into the symbol tables. While one lives, nothing else changes them.
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

// Compiles one section after the other.
class ModelCompiler {
 public:
  // Appends the compiled section to g_GCHead; 0 for a kind without compiled form.
  std::uint32_t CompileSection(const CRUXSection& section);

 private:
  friend struct PayloadCompiler;

  // Appends the compiled values of an entry to a record.
  void SetEntryValues(std::uint32_t section_id, const CRUXEntry& entry, tagGCENTRY& record);

  // The compiled form of one operand; 0xFFFFFFFF for a text that means nothing.
  std::uint32_t GetValueVal(const std::string& text);

  // The compiled form of a text in that role.
  std::uint32_t FieldValue(Role role, const std::string& text);

  // The table whose names an entry of a section refers to; null when it is a text like any other.
  TableCursor* NameTable(std::uint32_t section_id, std::uint32_t entry_id);

  Interner interner_;
};

// The compiled sections: of the run going on, or of the loaded meta file. Owned by this list;
// released by CompDestory.
extern std::vector<tagGCSECT*> g_GCHead;

// Compiles every section of the source model into g_GCHead. InitTblD comes first. Returns 1.
std::uint32_t Compile();

// A new, empty record for a section of that kind; null for kinds that are not compiled.
tagGCSECT* CreateGCSect(std::uint32_t section_id);

// The compiled identifier of an entry with that key; 0 for entries that are not compiled.
std::uint32_t GetEntryName(std::uint32_t entry_id, const std::string& key);

// How often the records of g_GCHead were released or replaced: an index of them is
// valid for one generation.
std::uint32_t RecordsGeneration();
void InvalidateRecords();

// Deletes every record of g_GCHead. The symbol tables stay: a later run goes on with their indices.
void CompDestory();

// Writes g_GCHead and the symbol tables. Returns 1, or 0 when the file cannot be created or
// written.
std::uint32_t WriteMeta(const std::string& path);

// Loads a meta file into g_GCHead and the symbol tables; `info` may be null. Returns 1, or 0 with
// last-error CANNOT_OPEN, WRONG_FORMAT or, for a file that ends early, none of its own. What was
// read until then stays. The records that g_GCHead held are not deleted: release them with
// CompDestory first.
std::uint32_t ReadMeta(const std::string& path, tagMETAFILEINFO* info);

}  // namespace ruxcomp::core

#endif  // BACKEND_COMPILE_PASS_H_
