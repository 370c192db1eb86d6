// Reading a compiled file field by field, never beyond the record that one is in.
#ifndef TOOL_COMPILED_CURSOR_H_
#define TOOL_COMPILED_CURSOR_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tool/compiled/extent.h"
#include "tool/compiled/fault.h"

namespace rux {

// Every reading function is told what the field is called. The name goes into the list of pieces of
// the record that is being read, and into the Fault that the function throws when the record cannot
// hold the field. A count or length that comes back was held against what is left.
//
// All numbers are unsigned 32-bit words, least significant byte first.
class Cursor {
 public:
  // The bytes must outlive the cursor; so must `faults`.
  Cursor(std::string_view file, Faults& faults) : file_(file), end_(file.size()), faults_(faults) {}

  std::size_t offset() const { return offset_; }
  std::size_t left() const { return end_ - offset_; }

  std::uint32_t Word(const char* field);
  // How many things follow that take `least_size` bytes each at least.
  std::uint32_t Count(const char* field, std::size_t least_size);
  // A length, and that many bytes.
  std::string_view Text(const char* field);
  // A count, and that many texts.
  std::vector<std::string> Texts(const char* field);
  std::string_view Bytes(const char* field, std::size_t size);
  // Passes over bytes that must be zero.
  void Zeros(const char* field, std::size_t size);
  // The record that one is in must be over.
  void ExpectEnd() const;

  // A fault that does not keep one from reading on, and one that does.
  void Report(const char* field, std::size_t offset, const std::string& reason) const;
  [[noreturn]] void Fail(const char* field, std::size_t offset, const std::string& reason) const;

 private:
  friend class Record;

  struct Step {
    const char* record;
    std::size_t ordinal;
  };

  Fault FaultAt(const char* field, std::size_t offset, const std::string& reason) const;
  void Need(const char* field, std::size_t size) const;
  void Note(const char* field, std::size_t begin) const;
  std::uint32_t Length(const char* field);

  const std::string_view file_;
  std::size_t offset_ = 0;
  std::size_t end_;  // of the innermost record
  Faults& faults_;
  std::vector<Step> path_;                // of the innermost record
  std::vector<Piece>* pieces_ = nullptr;  // where its pieces are listed
};

// While it lives, the cursor is inside a record: faults tell so, and pieces go to the record's own
// list when it has one.
class Record {
 public:
  static constexpr std::size_t kNoOrdinal = static_cast<std::size_t>(-1);

  Record(Cursor& cursor, const char* name, std::size_t ordinal = kNoOrdinal,
         std::vector<Piece>* pieces = nullptr);
  ~Record();
  Record(const Record&) = delete;
  Record& operator=(const Record&) = delete;

  // Reads the length of the record, which becomes the end for all that is read: also after a fault,
  // the cursor leaves the record for what follows it.
  void Limit(const char* length_field);
  // The same for a record that is found by its place; it must lie in the file.
  void MoveTo(Extent place);

  // From the record's begin, behind the length if it has one, to where the cursor is.
  Extent extent() const { return {begin_, cursor_.offset() - begin_}; }

 private:
  Cursor& cursor_;
  std::size_t begin_;
  const std::size_t outer_end_;
  std::vector<Piece>* const outer_pieces_;
  bool limited_ = false;
};

}  // namespace rux

#endif  // TOOL_COMPILED_CURSOR_H_
