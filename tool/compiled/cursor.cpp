#include "tool/compiled/cursor.h"

#include <fmt/format.h>

#include <algorithm>

namespace rux {
namespace {

constexpr std::size_t kWordSize = 4;

std::uint32_t LoadWord(std::string_view bytes) {
  std::uint32_t word = 0;
  for (std::size_t i = kWordSize; i-- > 0;) {
    word = word << 8 | static_cast<unsigned char>(bytes[i]);
  }
  return word;
}

}  // namespace

std::uint32_t Cursor::Word(const char* field) {
  const std::string_view bytes = Bytes(field, kWordSize);
  return LoadWord(bytes);
}

std::uint32_t Cursor::Count(const char* field, std::size_t least_size) {
  const std::size_t begin = offset_;
  const std::uint32_t count = Word(field);
  if (count > left() / least_size) {
    Fail(field, begin,
         fmt::format("the count {0} (0x{0:X}) is too large, bytes left: {1}, for each: {2}", count,
                     left(), least_size));
  }
  return count;
}

std::string_view Cursor::Text(const char* field) {
  const std::size_t begin = offset_;
  const std::uint32_t length = Length(field);
  offset_ += length;
  Note(field, begin);
  return file_.substr(offset_ - length, length);
}

std::vector<std::string> Cursor::Texts(const char* field) {
  const std::size_t begin = offset_;
  std::vector<Piece>* const pieces = pieces_;
  pieces_ = nullptr;  // the list is one piece
  std::vector<std::string> texts;
  for (std::uint32_t count = Count(field, kWordSize); count > 0; --count) {
    texts.emplace_back(Text(field));
  }
  pieces_ = pieces;
  Note(field, begin);
  return texts;
}

std::string_view Cursor::Bytes(const char* field, std::size_t size) {
  Need(field, size);
  const std::size_t begin = offset_;
  offset_ += size;
  Note(field, begin);
  return file_.substr(begin, size);
}

void Cursor::Zeros(const char* field, std::size_t size) {
  if (size == 0) return;
  const std::size_t begin = offset_;
  const std::string_view bytes = Bytes(field, size);
  const std::size_t at = bytes.find_first_not_of('\0');
  if (at == std::string_view::npos) return;
  Report(field, begin + at,
         fmt::format("the byte 0x{:02X} must be zero", static_cast<unsigned char>(bytes[at])));
}

void Cursor::ExpectEnd() const {
  if (left() > 0) Report("end", offset_, fmt::format("bytes left over: {}", left()));
}

void Cursor::Report(const char* field, std::size_t offset, const std::string& reason) const {
  faults_.Add(FaultAt(field, offset, reason));
}

void Cursor::Fail(const char* field, std::size_t offset, const std::string& reason) const {
  throw FaultAt(field, offset, reason);
}

Fault Cursor::FaultAt(const char* field, std::size_t offset, const std::string& reason) const {
  std::string path;
  for (const Step& step : path_) {
    if (!path.empty()) path += ", ";
    path += step.record;
    if (step.ordinal != Record::kNoOrdinal) path += ' ' + std::to_string(step.ordinal);
  }
  return {offset, path, field, reason};
}

void Cursor::Need(const char* field, std::size_t size) const {
  if (size <= left()) return;
  Fail(field, offset_, fmt::format("bytes needed: {}, left: {}", size, left()));
}

void Cursor::Note(const char* field, std::size_t begin) const {
  if (pieces_ != nullptr) pieces_->push_back({field, {begin, offset_ - begin}});
}

std::uint32_t Cursor::Length(const char* field) {
  Need(field, kWordSize);
  const std::uint32_t length = LoadWord(file_.substr(offset_, kWordSize));
  if (length > left() - kWordSize) {
    Fail(field, offset_,
         fmt::format("the length {0} (0x{0:X}) is too large, bytes left: {1}", length,
                     left() - kWordSize));
  }
  offset_ += kWordSize;
  return length;
}

Record::Record(Cursor& cursor, const char* name, std::size_t ordinal, std::vector<Piece>* pieces)
    : cursor_(cursor),
      begin_(cursor.offset_),
      outer_end_(cursor.end_),
      outer_pieces_(cursor.pieces_) {
  cursor_.path_.push_back({name, ordinal});
  if (pieces != nullptr) cursor_.pieces_ = pieces;
}

Record::~Record() {
  if (limited_) cursor_.offset_ = cursor_.end_;
  cursor_.end_ = outer_end_;
  cursor_.pieces_ = outer_pieces_;
  cursor_.path_.pop_back();
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

}  // namespace rux
