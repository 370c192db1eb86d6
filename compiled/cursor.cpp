#include "compiled/cursor.h"

namespace rux::compiled {

Words Cursor::WordPieces(const char* field, std::size_t count) {
  const std::size_t begin = offset_;
  for (std::size_t i = 0; i < count; ++i) Word(field);
  return Words(file_.substr(begin, count * kWordSize));
}

std::string_view Cursor::Text(const char* field) {
  const std::size_t begin = offset_;
  const std::uint32_t length = Length(field);
  offset_ += length;
  Note(field, begin);
  return file_.substr(offset_ - length, length);
}

Texts Cursor::TextList(const char* field) {
  const std::size_t begin = offset_;
  std::vector<Piece>* const pieces = std::exchange(pieces_, nullptr);  // the list is one piece
  std::uint32_t count = Count(field, kWordSize);
  const std::size_t first = offset_;
  for (; count > 0; --count) Text(field);
  pieces_ = pieces;
  Note(field, begin);
  return Texts(file_.substr(first, offset_ - first));
}

void Cursor::Zeros(const char* field, std::size_t size) {
  if (size == 0) return;
  const std::size_t begin = offset_;
  const std::string_view bytes = Bytes(field, size);
  const std::size_t at = bytes.find_first_not_of('\0');
  if (at == std::string_view::npos) return;
  Report(field, begin + at, "the byte 0x{:02X} must be zero",
         static_cast<unsigned char>(bytes[at]));
}

void Cursor::ExpectEnd() {
  if (left() > 0) Report("end", offset_, "bytes left over: {}", left());
}

std::string Cursor::Path() const {
  std::string path;
  for (std::size_t i = 0; i < depth_; ++i) {
    if (i > 0) path += ", ";
    path += path_[i].record;
    if (path_[i].ordinal != Record::kNoOrdinal) path += ' ' + std::to_string(path_[i].ordinal);
  }
  return path;
}

void Cursor::FailCount(const char* field, std::uint32_t count, std::size_t least_size) const {
  Fail(field, offset_ - kWordSize,
       "the count {0} (0x{0:X}) is too large, bytes left: {1}, for each: {2}", count, left(),
       least_size);
}

void Cursor::FailNeed(const char* field, std::size_t size) const {
  Fail(field, offset_, "bytes needed: {}, left: {}", size, left());
}

std::uint32_t Cursor::Length(const char* field) {
  if (kWordSize > left()) FailNeed(field, kWordSize);
  const std::uint32_t length = LoadWord(&file_[offset_]);
  if (length > left() - kWordSize) {
    Fail(field, offset_, "the length {0} (0x{0:X}) is too large, bytes left: {1}", length,
         left() - kWordSize);
  }
  offset_ += kWordSize;
  return length;
}

void Record::Limit(const char* length_field) {
  const std::size_t begin = cursor_.offset_;
  const std::uint32_t length = cursor_.Length(length_field);
  cursor_.Note(length_field, begin);
  MoveTo({cursor_.offset_, length});
}

void Record::MoveTo(Extent place) {
  begin_ = place.offset;
  cursor_.offset_ = begin_;
  cursor_.end_ = begin_ + place.size;
  limited_ = true;
}

}  // namespace rux::compiled
