// Going through a debug meta file from end to end, record by record, without keeping any.
#ifndef COMPILED_DEBUG_WALK_H_
#define COMPILED_DEBUG_WALK_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "compiled/cursor.h"
#include "compiled/extent.h"
#include "compiled/file_header.h"
#include "compiled/words.h"

namespace rux::compiled {

// Records as they stand in the file. What they point to is in its bytes; lists of pieces are empty
// unless they are asked for.

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
  std::array<DebugFieldView, 6> fields;  // a type and five texts are the most
  std::size_t field_count = 0;
  Extent payload_extent;

  bool is_given() const { return payload_type != 0; }
};

// What is done with the records. Faults that are reported to the cursor get the path of the record
// that one is in.
class DebugVisitor {
 public:
  virtual ~DebugVisitor() = default;

  virtual void OnWordCount(Extent extent) = 0;
  virtual void OnWord(Cursor& cursor, DebugWordView& word) = 0;
  virtual void OnKindCount(Extent extent) = 0;
  virtual void OnKindBegin(Cursor& cursor, std::size_t ordinal, Extent section_count) = 0;
  // With the first section or never: not every file has the list.
  virtual void OnFiles(Cursor& cursor, const Texts& files, Extent extent) = 0;
  virtual void OnSectionBegin(Cursor& cursor, const DebugSectionView& section) = 0;
  virtual void OnEntry(Cursor& cursor, DebugEntryView& entry) = 0;
  virtual void OnSectionEnd(Cursor& cursor, DebugSectionView& section) = 0;
  // Unless there is a fault that keeps one from reading all of it.
  virtual void OnEnd(Cursor& cursor) = 0;
};

// What is wrong with the layout goes to `faults`, and the visitor does not get to see it.
FileHeader WalkDebugMeta(std::string_view bytes, Faults& faults, DebugVisitor& visitor,
                         bool keeps_pieces = false);

}  // namespace rux::compiled

#endif  // COMPILED_DEBUG_WALK_H_
