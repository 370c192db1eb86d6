// Reading a compiled file field by field, never beyond the record that one is in.
#ifndef COMPILED_CURSOR_H_
#define COMPILED_CURSOR_H_

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiled/extent.h"
#include "compiled/fault.h"
#include "compiled/words.h"

namespace rux::compiled {

// Every reading function is told what the field is called. The name goes into the list of pieces of
// the record that is being read, when it has one, and into the Fault that the function throws when
// the record cannot hold the field. A count or length that comes back was held against what is
// left. What comes back points into the file: reading allocates nothing.
class Cursor {
 public:
  // The bytes must outlive the cursor; so must `faults`.
  Cursor(std::string_view file, Faults& faults) : file_(file), end_(file.size()), faults_(faults) {}

  std::size_t offset() const { return offset_; }
  std::size_t left() const { return end_ - offset_; }

  std::uint32_t Word(const char* field) { return LoadWord(Bytes(field, kWordSize).data()); }
  std::string_view Bytes(const char* field, std::size_t size) {
    if (size > left()) FailNeed(field, size);
    const std::size_t begin = offset_;
    offset_ += size;
    Note(field, begin);
    return {file_.data() + begin, size};
  }
  // How many things follow that take `least_size` bytes each at least.
  std::uint32_t Count(const char* field, std::size_t least_size) {
    const std::uint32_t count = Word(field);
    if (std::uint64_t{count} * least_size > left()) FailCount(field, count, least_size);
    return count;
  }
  // As many words, each a field.
  Words WordList(const char* field, std::size_t count) {
    if (pieces_ != nullptr) return WordPieces(field, count);
    return Words(Bytes(field, count * kWordSize));
  }
  // A length, and that many bytes.
  std::string_view Text(const char* field);
  // A count, and that many texts.
  Texts TextList(const char* field);
  // Passes over bytes that must be zero.
  void Zeros(const char* field, std::size_t size);
  // The record that one is in must be over.
  void ExpectEnd();

  // A fault that does not keep one from reading on, and one that does. The reason is a format and
  // its arguments.
  template <class... Args>
  void Report(const char* field, std::size_t offset, fmt::format_string<Args...> reason,
              Args&&... args) {
    if (!faults_.Keeps(offset)) return faults_.AddUnkept();
    faults_.Add({offset, Path(), field, fmt::format(reason, std::forward<Args>(args)...)});
  }
  template <class... Args>
  [[noreturn]] void Fail(const char* field, std::size_t offset, fmt::format_string<Args...> reason,
                         Args&&... args) const {
    throw Fault{offset, Path(), field, fmt::format(reason, std::forward<Args>(args)...)};
  }

 private:
  friend class Record;

  std::string Path() const;
  [[noreturn]] void FailCount(const char* field, std::uint32_t count, std::size_t least_size) const;
  [[noreturn]] void FailNeed(const char* field, std::size_t size) const;
  void Note(const char* field, std::size_t begin) {
    if (pieces_ != nullptr) pieces_->push_back({field, {begin, offset_ - begin}});
  }
  std::uint32_t Length(const char* field);
  Words WordPieces(const char* field, std::size_t count);

  const std::string_view file_;
  std::size_t offset_ = 0;
  std::size_t end_;  // of the innermost record
  Faults& faults_;
  // The records that one is in, outermost first.
  struct Step {
    const char* record;
    std::size_t ordinal;
  };
  static constexpr std::size_t kMostSteps = 8;  // none is nested deeper
  std::array<Step, kMostSteps> path_ = {};
  std::size_t depth_ = 0;
  std::vector<Piece>* pieces_ = nullptr;  // where those of the innermost record are listed
};

// While it lives, the cursor is inside a record: faults tell so, and pieces go to the record's own
// list when it has one.
class Record {
 public:
  static constexpr std::size_t kNoOrdinal = static_cast<std::size_t>(-1);

  Record(Cursor& cursor, const char* name, std::size_t ordinal = kNoOrdinal,
         std::vector<Piece>* pieces = nullptr)
      : cursor_(cursor),
        begin_(cursor.offset_),
        outer_end_(cursor.end_),
        outer_pieces_(cursor.pieces_) {
    cursor_.path_[cursor_.depth_++] = {name, ordinal};
    if (pieces != nullptr) cursor_.pieces_ = pieces;
  }
  ~Record() {
    if (limited_) cursor_.offset_ = cursor_.end_;
    --cursor_.depth_;
    cursor_.end_ = outer_end_;
    cursor_.pieces_ = outer_pieces_;
  }
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

}  // namespace rux::compiled

#endif  // COMPILED_CURSOR_H_
