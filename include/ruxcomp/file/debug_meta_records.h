// The records of a debug meta file where they are in its bytes.
#ifndef RUXCOMP_FILE_DEBUG_META_RECORDS_H_
#define RUXCOMP_FILE_DEBUG_META_RECORDS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/views.h"
#include "ruxcomp/language/values.h"

namespace ruxcomp::file {

// What the records point to is in the bytes of the file; lists of pieces are empty unless they are
// asked for.

struct DebugWordView {
  std::string_view name;
  std::uint32_t value = 0;
  Extent extent;
  std::vector<Piece> pieces;
};

// What sections and entries have in common.
struct DebugObjectView {
  std::size_t ordinal = 0;
  std::size_t offset = 0;  // of the words of the object, the identifier first
  std::uint32_t identifier = 0;
  std::uint32_t notation = 0;
  std::uint32_t line = 0;
  std::uint32_t file_index = 0;
  std::string_view name;
  Extent extent;
  std::vector<Piece> pieces;

  // The words before the identifier: the length of the record, that of the object.
  std::size_t record_length_offset() const { return offset - 2 * kWordSize; }
  std::size_t object_length_offset() const { return offset - kWordSize; }
  std::size_t notation_offset() const { return offset + kWordSize; }
  std::size_t line_offset() const { return offset + 2 * kWordSize; }
  std::size_t file_index_offset() const { return offset + 3 * kWordSize; }
  std::size_t name_offset() const { return offset + 4 * kWordSize; }
};

struct DebugSectionView : DebugObjectView {
  std::uint32_t entry_count = 0;
  std::size_t entry_count_offset = 0;
};

// One field of an entry's value: a text, or a list of texts.
struct DebugFieldView {
  const char* name = "";
  bool is_list = false;
  Texts texts;
  Extent extent;
};

struct DebugEntryView : DebugObjectView {
  std::uint32_t payload_type = 0;  // 0: the script did not give the entry
  std::uint32_t number = 0;
  std::uint32_t value_type = 0;
  std::size_t value_type_offset = 0;
  std::array<DebugFieldView, 1 + language::kMaxFields> fields;  // of a value: its type first
  std::size_t field_count = 0;
  Extent payload_extent;

  bool is_given() const { return payload_type != 0; }
};

// What a walk does with the records: visitors hide the functions that they need. Faults that are
// reported to the cursor get the path of the record that it is in.
struct DebugMetaVisitor {
  void OnWordCount(Extent) {}
  void OnWord(Cursor&, DebugWordView&) {}
  void OnKindCount(Extent) {}
  void OnKindBegin(Cursor&, Extent /*section_count*/) {}
  // With the first section or never: not every file has the list.
  void OnFiles(const Texts&, Extent) {}
  void OnSectionBegin(Cursor&, const DebugSectionView&) {}
  void OnEntry(Cursor&, DebugEntryView&) {}
  void OnSectionEnd(Cursor&, DebugSectionView&) {}
  // Unless there is a fault that keeps the walk from reading all of the file.
  void OnEnd(Cursor&) {}
};

}  // namespace ruxcomp::file

#endif  // RUXCOMP_FILE_DEBUG_META_RECORDS_H_
