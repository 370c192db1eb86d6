// Turning the checked source model into compiled sections, and writing and reading meta files.
#ifndef BACKEND_COMPILE_PASS_H_
#define BACKEND_COMPILE_PASS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "backend/interner.h"
#include "frontend/section.h"
#include "ruxcomp/records.h"

namespace ruxcomp::core {

// Compiled sections, as the meta file has them.
struct CompiledSections {
  std::uint32_t count = 0;
  std::vector<std::uint32_t> words;
};

// Compiles one section after the other.
class ModelCompiler {
 public:
  explicit ModelCompiler(CompiledSections& out) : out_(out) {}

  // Appends the compiled section; 0 for a kind without compiled form.
  std::uint32_t CompileSection(const CRUXSection& section);

  // Call it at the end, also after a raised error.
  void Finish() { interner_.Finish(); }

 private:
  friend struct PayloadCompiler;

  // Appends an entry; false for one without compiled form.
  bool CompileEntry(const CRUXSection& section, const CRUXEntry& entry);

  // The compiled identifier of an entry; 0 for entries that are not compiled.
  std::uint32_t GetEntryName(const CRUXEntry& entry);

  // Appends the compiled values of an entry.
  void SetEntryValues(std::uint32_t section_id, const CRUXEntry& entry);

  // The compiled form of one operand; 0xFFFFFFFF for a text that means nothing.
  std::uint32_t GetValueVal(std::string_view text);

  // The compiled form of a text with that role.
  std::uint32_t FieldValue(Role role, std::string_view text);

  Interner interner_;
  CompiledSections& out_;
};

// The sections of the loaded meta file. Owned by this list; released by CompDestory.
extern std::vector<tagGCSECT*> g_GCHead;

// Compiles every section of the source model. InitTblD comes first.
void Compile(CompiledSections& out);

// How often the records of g_GCHead were released or replaced: an index of them is valid for one
// generation.
std::uint32_t RecordsGeneration();
void InvalidateRecords();

// Deletes every record of g_GCHead. The symbol tables stay: a later run continues their indices.
void CompDestory();

// Writes the sections of g_GCHead, then the compiled ones, and the symbol tables. Returns 1, or 0
// when the file cannot be created or written.
std::uint32_t WriteMeta(const std::string& path, const CompiledSections& compiled);

// Loads a meta file into g_GCHead and the symbol tables; `info` may be null. Returns 1, or 0 with
// last-error CANNOT_OPEN, WRONG_FORMAT or, for a file that ends early, no code. What was read until
// then stays. The records that g_GCHead held before are not deleted: release them with CompDestory
// first.
std::uint32_t ReadMeta(const std::string& path, tagMETAFILEINFO* info);

}  // namespace ruxcomp::core

#endif  // BACKEND_COMPILE_PASS_H_
