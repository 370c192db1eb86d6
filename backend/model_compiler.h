// Compiling one section after the other.
#ifndef BACKEND_MODEL_COMPILER_H_
#define BACKEND_MODEL_COMPILER_H_

#include <cstdint>
#include <string>

#include "backend/interner.h"
#include "checker/value_fields.h"
#include "frontend/section.h"
#include "ruxcomp/records.h"

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

#endif  // BACKEND_MODEL_COMPILER_H_
