#include "debugmeta/bytes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include "frontend/value_records.h"
#include "ruxcomp/language/words.h"

namespace ruxcomp::core {

namespace {
// std::vector::at words its error otherwise; this text is part of the interface, pinned by
// tests/api/debug_meta_read_test.cpp.
[[noreturn]] void RaiseEndOfRecord() { throw std::out_of_range("vector"); }
}  // namespace

void ByteWriter::operator()(const std::string& text) {
  Word(static_cast<std::uint32_t>(text.size()));
  out_.insert(out_.end(), text.begin(), text.end());
}

void ByteWriter::operator()(const TextList& list) {
  Word(static_cast<std::uint32_t>(list.size()));
  for (const std::string& text : list) (*this)(text);
}

RecordView ByteReader::Take(std::size_t count) {
  const std::size_t start = std::min(position_, in_.there);
  const std::size_t size = std::min(count, in_.size - position_);
  position_ += size;
  return {in_.data + start, std::min(size, in_.there - start), size};
}

std::uint32_t ByteReader::Word() {
  std::uint8_t bytes[ruxcomp::language::kWordSize] = {};
  const RecordView taken = Take(sizeof bytes);
  if (taken.size < sizeof bytes) RaiseEndOfRecord();
  std::copy_n(taken.data, taken.there, bytes);
  return ruxcomp::language::LoadWord(bytes);
}

RecordView ByteReader::Nested() {
  const std::uint32_t count = Word();
  const RecordView taken = Take(count);
  if (taken.size < count) RaiseEndOfRecord();
  return taken;
}

void ByteReader::operator()(std::string& text) {
  const std::uint32_t count = Word();
  const RecordView taken = Take(count);
  text.append(taken.data, taken.data + taken.there);
  text.append(taken.size - taken.there, '\0');
  if (taken.size < count) RaiseEndOfRecord();
}

void ByteReader::operator()(TextList& list) {
  for (std::uint32_t count = Word(); count > 0; --count) {
    std::string text;
    (*this)(text);
    list.push_back(std::move(text));
  }
}

}  // namespace ruxcomp::core
