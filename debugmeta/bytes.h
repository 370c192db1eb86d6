// Byte records: how a debug meta file stores the source model.
//
// A record is packed. A word is four bytes, least significant first; a text a word with its byte
// count and the bytes; a list a word with its element count and the texts; a nested record a word
// with its length and its bytes.
#ifndef DEBUGMETA_BYTES_H_
#define DEBUGMETA_BYTES_H_

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/text.h"
#include "frontend/value_records.h"
#include "ruxcomp/language/words.h"

namespace ruxcomp::core {

using Bytes = std::vector<std::uint8_t>;

// A record to read: the bytes that are there, then zeros up to its size. A file that ends inside a
// record leaves such zeros, which take no memory.
struct RecordView {
  // cppcheck-suppress noExplicitConstructor; a view, as it is
  RecordView(const Bytes& bytes) : RecordView(bytes, bytes.size()) {}  // NOLINT
  RecordView(const Bytes& bytes, std::size_t full_size)
      : data(bytes.data()), there(bytes.size()), size(full_size) {}
  RecordView(const std::uint8_t* from, std::size_t bytes_there, std::size_t full_size)
      : data(from), there(bytes_there), size(full_size) {}

  const std::uint8_t* data;
  std::size_t there;
  std::size_t size;
};

// Appends fields to a record. It is also a visitor for the fields of the records in
// value_records.h.
class ByteWriter {
 public:
  explicit ByteWriter(Bytes& out) : out_(out) {}

  void Word(std::uint32_t word) { ruxcomp::language::AppendWord(out_, word); }
  void Words(std::initializer_list<std::uint32_t> words) {
    ruxcomp::language::AppendWords(out_, words);
  }

  // The record that the object's GetBuffer appends, after its length.
  template <class Object>
  void Nested(const Object& object) {
    const std::size_t start = out_.size();
    Word(0);
    object.GetBuffer(out_);
    const std::size_t length = out_.size() - start - ruxcomp::language::kWordSize;
    ruxcomp::language::StoreWord(out_, start, static_cast<std::uint32_t>(length));
  }

  void operator()(std::string_view text);
  void operator()(const TextList& list);
  void operator()(const std::vector<std::string>& list);

 private:
  template <class List>
  void AppendList(const List& list);

  Bytes& out_;
};

// Reads the fields of a record, in order. A count that is too large reads what is left and then,
// like every read at the end, raises std::out_of_range with the text "vector"; what was read until
// then stays in its field. Texts go into the arena of the model.
class ByteReader {
 public:
  explicit ByteReader(const RecordView& in) : in_(in) {}

  std::uint32_t Word();
  RecordView Nested();  // valid as long as this record
  void operator()(Text& text);
  void operator()(std::string_view& text);
  void operator()(TextList& list);
  void operator()(std::vector<std::string>& list);  // appends

  // Reads a text or list of the type Read and calls keep(read); after a raised error, with what was
  // read until then.
  template <class Read, class Keep>
  void ReadInto(Keep keep) {
    Read read;
    try {
      (*this)(read);
    } catch (const std::out_of_range&) {
      keep(read);
      throw;
    }
    keep(read);
  }

 private:
  // The next bytes, as many as there are of `count`; moves past them.
  RecordView Take(std::size_t count);

  RecordView in_;
  std::size_t position_ = 0;
};

// The file table is in the first object record that a process writes, and is expected in the first
// one that it reads. Records carry no mark of it: writing and reading keep track in these, which
// only ResetProcessState clears.
extern bool incFilesWritten;
extern bool incFilesRead;

// The identifier of the section or entry that a record stores. Raises the end-of-record error for a
// record of less than eight bytes.
std::uint32_t RecordId(const RecordView& record);

}  // namespace ruxcomp::core

#endif  // DEBUGMETA_BYTES_H_
