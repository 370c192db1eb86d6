#include "debugmeta/bytes.h"

#include <algorithm>
#include <stdexcept>

#include "backend/words.h"

namespace {
// The library's own at() words its error otherwise; hosts know this text.
[[noreturn]] void RaiseEndOfRecord() { throw std::out_of_range("vector"); }
}  // namespace

void ByteWriter::Word(std::uint32_t word) { AppendWord(out_, word); }

void ByteWriter::Nested(const Bytes& record) {
  Word(static_cast<std::uint32_t>(record.size()));
  out_.insert(out_.end(), record.begin(), record.end());
}

void ByteWriter::operator()(const std::string& text) {
  Word(static_cast<std::uint32_t>(text.size()));
  out_.insert(out_.end(), text.begin(), text.end());
}

void ByteWriter::operator()(const TextList& list) {
  Word(static_cast<std::uint32_t>(list.size()));
  for (const std::string& text : list) (*this)(text);
}

std::uint32_t ByteReader::Word() {
  if (in_.size() - position_ < 4) RaiseEndOfRecord();
  const std::uint32_t word = LoadWord(&in_[position_]);
  position_ += 4;
  return word;
}

template <class Target>
void ByteReader::Take(std::uint32_t count, Target& target) {
  const std::size_t there = std::min<std::size_t>(count, in_.size() - position_);
  const auto from = in_.begin() + static_cast<std::ptrdiff_t>(position_);
  target.insert(target.end(), from, from + static_cast<std::ptrdiff_t>(there));
  position_ += there;
  if (there < count) RaiseEndOfRecord();
}

Bytes ByteReader::Nested() {
  Bytes record;
  Take(Word(), record);
  return record;
}

void ByteReader::operator()(std::string& text) { Take(Word(), text); }

void ByteReader::operator()(TextList& list) {
  for (std::uint32_t count = Word(); count > 0; --count) {
    std::string text;
    (*this)(text);
    list.push_back(std::move(text));
  }
}
