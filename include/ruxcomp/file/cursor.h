// Reading a compiled file field by field, never beyond the record that the cursor is in.
#ifndef RUXCOMP_FILE_CURSOR_H_
#define RUXCOMP_FILE_CURSOR_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/views.h"

namespace ruxcomp::file {

// Every reading function takes the name of the field. The name goes into the list of pieces of the
// record that is being read, when it has one, and into the fault when the record cannot hold the
// field. A count or length that comes back was compared with what is left. What comes back points
// into the file: reading allocates nothing.
//
// After a field that cannot be read, the cursor has failed: zeros and nothing come back, and
// nothing is reported, up to the end of the record whose reader calls Recover().
class Cursor {
 public:
  // The bytes must outlive the cursor; so must `faults`.
  Cursor(std::string_view file, Faults& faults) : file_(file), end_(file.size()), faults_(faults) {}

  std::size_t offset() const { return offset_; }
  std::size_t left() const { return end_ - offset_; }
  bool ok() const { return !has_failed_; }

  std::uint32_t Word(const char* field) {
    if (kWordSize > left()) return FailNeed(field, kWordSize), 0;
    const std::size_t begin = offset_;
    offset_ += kWordSize;
    Note(field, begin);
    return LoadWord(file_.data() + begin);
  }
  std::string_view Bytes(const char* field, std::size_t size) {
    if (size > left()) return FailNeed(field, size), std::string_view();
    const std::size_t begin = offset_;
    offset_ += size;
    Note(field, begin);
    return {file_.data() + begin, size};
  }
  // How many things follow that take `least_size` bytes each at least.
  std::uint32_t Count(const char* field, std::size_t least_size) {
    const std::uint32_t count = Word(field);
    if (std::uint64_t{count} * least_size <= left()) return count;
    return FailCount(field, count, least_size), 0;
  }
  // As many words, each a field.
  Words WordList(const char* field, std::size_t count) {
    if (pieces_ == nullptr) return Words(Bytes(field, count * kWordSize));
    const std::size_t begin = offset_;
    for (std::size_t i = 0; i < count; ++i) Word(field);
    return Words(file_.substr(begin, offset_ - begin));
  }
  // A length, and that many bytes.
  std::string_view Text(const char* field) {
    const std::size_t begin = offset_;
    const std::uint32_t length = Length(field);
    offset_ += length;
    Note(field, begin);
    return file_.substr(offset_ - length, length);
  }
  // A count, and that many texts.
  Texts TextList(const char* field) {
    const std::size_t begin = offset_;
    std::vector<Piece>* const pieces = std::exchange(pieces_, nullptr);  // the list is one piece
    std::uint32_t count = Count(field, kWordSize);
    const std::size_t first = offset_;
    for (; count > 0; --count) Text(field);
    pieces_ = pieces;
    Note(field, begin);
    return Texts(ok() ? file_.substr(first, offset_ - first) : std::string_view());
  }
  // Passes over what was read by other means, up to that offset in the innermost record.
  void MoveTo(std::size_t offset) { offset_ = offset; }
  // Passes over bytes that must be zero.
  void Zeros(const char* field, std::size_t size) {
    if (size == 0) return;
    const std::size_t begin = offset_;
    const std::string_view bytes = Bytes(field, size);
    const std::size_t at = bytes.find_first_not_of('\0');
    if (at == std::string_view::npos) return;
    Report(field, begin + at, "the byte 0x{:02X} must be zero",
           static_cast<unsigned char>(bytes[at]));
  }
  // The record that the cursor is in must be over.
  void ExpectEnd() {
    if (left() > 0) Report("end", offset_, "bytes left over: {}", left());
  }

  // A fault after which reading goes on, and one after which the cursor has failed. The reason is a
  // format (fault.h) and its arguments.
  template <class... Args>
  [[gnu::cold]] void Report(const char* field, std::size_t offset, std::string_view reason,
                            const Args&... args) {
    if (has_failed_) return;
    if (!faults_.Keeps(offset)) return faults_.AddUnkept();
    faults_.Add({offset, Path(), field, ReasonText(reason, {FaultArgument(args)...})});
  }
  template <class... Args>
  [[gnu::cold]] void Fail(const char* field, std::size_t offset, std::string_view reason,
                          const Args&... args) {
    Report(field, offset, reason, args...);
    has_failed_ = true;
    end_ = offset_;  // so that no reading function need ask
  }

  // Before a fault: the file ends where more was to follow.
  [[gnu::cold]] void NoteCut() {
    if (!has_failed_) faults_.NoteCut();
  }

  // In the record that is found again whatever is wrong in it: whether the cursor had failed. The
  // end of the record is the place to go on.
  bool Recover() { return std::exchange(has_failed_, false); }

 private:
  friend class Record;
  friend class LimitedRecord;

  std::string Path() const;
  void NoteCutAtEnd() {
    if (end_ == file_.size()) NoteCut();
  }
  // Out of the way of what is read without a fault, so that reading is inlined.
  [[gnu::cold, gnu::noinline]] void FailNeed(const char* field, std::size_t size) {
    NoteCutAtEnd();
    Fail(field, offset_, "bytes needed: {}, left: {}", size, left());
  }
  [[gnu::cold, gnu::noinline]] void FailCount(const char* field, std::uint32_t count,
                                              std::size_t least_size) {
    NoteCutAtEnd();
    Fail(field, offset_ - kWordSize,
         "the count {0} (0x{0:X}) is too large, bytes left: {1}, for each: {2}", count, left(),
         least_size);
  }
  [[gnu::cold, gnu::noinline]] void FailLength(const char* field, std::uint32_t length) {
    NoteCutAtEnd();
    Fail(field, offset_, "the length {0} (0x{0:X}) is too large, bytes left: {1}", length,
         left() - kWordSize);
  }
  void Note(const char* field, std::size_t begin) {
    if (pieces_ != nullptr) AddPiece(field, begin);
  }
  [[gnu::noinline]] void AddPiece(const char* field, std::size_t begin) {
    pieces_->push_back({field, {begin, offset_ - begin}});
  }
  std::uint32_t Length(const char* field) {
    if (kWordSize > left()) return FailNeed(field, kWordSize), 0;
    const std::uint32_t length = LoadWord(&file_[offset_]);
    if (length > left() - kWordSize) return FailLength(field, length), 0;
    offset_ += kWordSize;
    return length;
  }

  const std::string_view file_;
  std::size_t offset_ = 0;
  std::size_t end_;  // of the innermost record
  bool has_failed_ = false;
  Faults& faults_;
  // The records that the cursor is in, outermost first.
  struct Step {
    const char* record;
    std::size_t ordinal;
  };
  static constexpr std::size_t kMostSteps = 8;  // none is nested deeper
  std::array<Step, kMostSteps> path_ = {};
  std::size_t depth_ = 0;
  std::vector<Piece>* pieces_ = nullptr;  // where those of the innermost record are listed
};

// While it lives, the cursor is inside a record: faults say so, and pieces go to the record's own
// list when it has one.
class Record {
 public:
  static constexpr std::size_t kNoOrdinal = static_cast<std::size_t>(-1);

  Record(Cursor& cursor, const char* name, std::size_t ordinal = kNoOrdinal,
         std::vector<Piece>* pieces = nullptr)
      : cursor_(cursor),
        begin_(cursor.offset_),
        step_(&cursor.path_[cursor.depth_++]),
        outer_pieces_(cursor.pieces_) {
    *step_ = {name, ordinal};
    if (pieces != nullptr) cursor_.pieces_ = pieces;
  }
  ~Record() {
    --cursor_.depth_;
    cursor_.pieces_ = outer_pieces_;
  }
  Record(const Record&) = delete;
  Record& operator=(const Record&) = delete;

  // The cursor goes on to the next record of the same name.
  void GoOn(std::size_t ordinal) { step_->ordinal = ordinal; }

  // From the begin of the record, after its length if it has one, to where the cursor is.
  Extent extent() const { return {begin_, cursor_.offset() - begin_}; }

 protected:
  Cursor& cursor_;
  std::size_t begin_;

 private:
  Cursor::Step* const step_;
  std::vector<Piece>* const outer_pieces_;
};

// A record whose end is known: nothing is read beyond it, and the cursor leaves it for what follows
// it, also after a fault.
class LimitedRecord : public Record {
 public:
  // The length is to be read.
  LimitedRecord(Cursor& cursor, const char* name, std::size_t ordinal = kNoOrdinal,
                std::vector<Piece>* pieces = nullptr)
      : Record(cursor, name, ordinal, pieces), outer_end_(cursor.end_) {}
  // The place is known; it must be in the file.
  LimitedRecord(Cursor& cursor, const char* name, std::size_t ordinal, std::vector<Piece>* pieces,
                Extent place)
      : LimitedRecord(cursor, name, ordinal, pieces) {
    MoveTo(place);
  }
  ~LimitedRecord() {
    if (limit_ == kNoLimit) return;
    cursor_.offset_ = limit_;
    cursor_.end_ = cursor_.ok() ? outer_end_ : limit_;
  }
  LimitedRecord(const LimitedRecord&) = delete;
  LimitedRecord& operator=(const LimitedRecord&) = delete;

  // Reads the length of the record. False when the length cannot be.
  bool Limit(const char* length_field) {
    const std::size_t begin = cursor_.offset_;
    const std::uint32_t length = cursor_.Length(length_field);
    if (!cursor_.ok()) return false;
    cursor_.Note(length_field, begin);
    MoveTo({cursor_.offset_, length});
    return true;
  }

 private:
  static constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

  void MoveTo(Extent place) {
    begin_ = place.offset;
    limit_ = begin_ + place.size;
    cursor_.offset_ = begin_;
    cursor_.end_ = limit_;
  }

  const std::size_t outer_end_;
  std::size_t limit_ = kNoLimit;
};

inline std::string Cursor::Path() const {
  std::string path;
  for (std::size_t i = 0; i < depth_; ++i) {
    if (i > 0) path += ", ";
    path += path_[i].record;
    if (path_[i].ordinal != Record::kNoOrdinal) path += ' ' + std::to_string(path_[i].ordinal);
  }
  return path;
}

}  // namespace ruxcomp::file

#endif  // RUXCOMP_FILE_CURSOR_H_
