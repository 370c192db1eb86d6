#include "debugmeta/bytes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/obj.h"
#include "frontend/text.h"
#include "ruxcomp/language/words.h"

namespace ruxcomp::core {

namespace {
// std::vector::at has another text; this one is part of the interface, pinned by
// tests/api/debug_meta_read_test.cpp.
[[noreturn]] void RaiseEndOfRecord() { throw std::out_of_range("vector"); }
}  // namespace

void ByteWriter::operator()(std::string_view text) {
  Word(static_cast<std::uint32_t>(text.size()));
  out_.insert(out_.end(), text.begin(), text.end());
}

template <class List>
void ByteWriter::AppendList(const List& list) {
  Word(static_cast<std::uint32_t>(list.size()));
  for (const std::string_view text : list) (*this)(text);
}

void ByteWriter::operator()(const TextList& list) { AppendList(list); }
void ByteWriter::operator()(const std::vector<std::string>& list) { AppendList(list); }

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

void ByteReader::operator()(Text& text) {
  const std::uint32_t count = Word();
  const RecordView taken = Take(count);
  std::string bytes(taken.data, taken.data + taken.there);
  bytes.resize(taken.size);
  text = CRUXObj::m_arena.Add(bytes);
  if (taken.size < count) RaiseEndOfRecord();
}

void ByteReader::operator()(std::string_view& text) {
  ReadInto<Text>([&](Text read) { text = read; });
}

void ByteReader::operator()(TextList& list) {
  std::vector<std::string_view> texts;
  const auto keep = [&] { list = CRUXObj::m_arena.Add(texts); };
  try {
    for (std::uint32_t count = Word(); count > 0; --count) {
      Text text;
      (*this)(text);
      texts.push_back(text);
    }
  } catch (const std::out_of_range&) {
    keep();
    throw;
  }
  keep();
}

void ByteReader::operator()(std::vector<std::string>& list) {
  for (std::uint32_t count = Word(); count > 0; --count) {
    Text text;
    (*this)(text);
    list.emplace_back(text.view());
  }
}

}  // namespace ruxcomp::core
