// Parts of a compiled file where they are in its bytes.
#ifndef RUXCOMP_FILE_VIEWS_H_
#define RUXCOMP_FILE_VIEWS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ruxcomp/language/words.h"

namespace ruxcomp::file {

using language::kWordSize;
using language::LoadWord;

// Some bytes of the file.
struct Extent {
  std::size_t offset = 0;
  std::size_t size = 0;
};

// One thing that a record is made of: a word, or a text or list with the words of its length.
struct Piece {
  const char* name;
  Extent extent;
};

// Words, one after the other. Valid as long as the bytes are.
class Words {
 public:
  Words() = default;
  explicit Words(std::string_view bytes) : bytes_(bytes) {}

  std::size_t size() const { return bytes_.size() / kWordSize; }
  bool empty() const { return bytes_.empty(); }
  [[gnu::always_inline]] std::uint32_t operator[](std::size_t i) const {
    return LoadWord(bytes_.data() + i * kWordSize);
  }

 private:
  std::string_view bytes_;
};

// Texts, one after the other, each with its length before it. Valid as long as the bytes are.
class Texts {
 public:
  Texts() = default;
  // The bytes must hold whole texts.
  explicit Texts(std::string_view bytes) : bytes_(bytes) {}

  // Calls use(text) for each, in order.
  template <class Use>
  void ForEach(Use use) const {
    for (std::string_view rest = bytes_; !rest.empty();) {
      const std::size_t length = LoadWord(rest.data());
      use(rest.substr(kWordSize, length));
      rest.remove_prefix(kWordSize + length);
    }
  }
  std::size_t size() const {
    std::size_t count = 0;
    ForEach([&](std::string_view) { ++count; });
    return count;
  }
  // The first one, of at least one.
  std::string_view front() const { return bytes_.substr(kWordSize, LoadWord(bytes_.data())); }

 private:
  std::string_view bytes_;
};

}  // namespace ruxcomp::file

#endif  // RUXCOMP_FILE_VIEWS_H_
