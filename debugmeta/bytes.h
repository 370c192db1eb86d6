// Byte records: how the source model stands in a debug meta file.
//
// A record is packed. A word is four bytes, least significant first; a text a word with its byte
// count and the bytes; a list a word with its element count and the texts; a nested record a word
// with its length and its bytes.
#ifndef DEBUGMETA_BYTES_H_
#define DEBUGMETA_BYTES_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;
using TextList = std::vector<std::string>;

// Appends fields to a record. Also a visitor for the fields of the records in value_records.h.
class ByteWriter {
 public:
  explicit ByteWriter(Bytes& out) : out_(out) {}

  void Word(std::uint32_t word);
  void Nested(const Bytes& record);
  void operator()(const std::string& text);
  void operator()(const TextList& list);

 private:
  Bytes& out_;
};

// Takes fields off a record, in order. Counts are trusted: one that is too large takes what is left
// and then, like every read at the end, raises std::out_of_range with the text "vector"; what was
// read until then stays in its field.
class ByteReader {
 public:
  explicit ByteReader(const Bytes& in) : in_(in) {}

  std::uint32_t Word();
  Bytes Nested();
  void operator()(std::string& text);  // appends
  void operator()(TextList& list);     // appends

 private:
  // Appends the next `count` bytes to a text or to a record.
  template <class Target>
  void Take(std::uint32_t count, Target& target);

  const Bytes& in_;
  std::size_t position_ = 0;
};

#endif  // DEBUGMETA_BYTES_H_
