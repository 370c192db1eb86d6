// The words of the read model; see model.h.
#ifndef RUXCOMP_MODEL_WORDS_H_
#define RUXCOMP_MODEL_WORDS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "ruxcomp/language/words.h"

namespace ruxcomp::detail {

// A number as it is in a meta file, the least significant byte first.
struct Word {
  unsigned char bytes[language::kWordSize];

  std::uint32_t Load() const noexcept { return language::LoadWord(bytes); }
  void Store(std::uint32_t number) noexcept { language::StoreWord(bytes, number); }
};
static_assert(sizeof(Word) == language::kWordSize && alignof(Word) == 1);

// As many as fit into the bytes.
class Words {
 public:
  Words() = default;
  explicit Words(std::string&& bytes) : bytes_(std::move(bytes)) {}

  std::size_t size() const noexcept { return bytes_.size() / sizeof(Word); }
  std::string_view bytes() const noexcept { return bytes_; }
  const Word* data() const noexcept { return reinterpret_cast<const Word*>(bytes_.data()); }

  void Reserve(std::size_t count) { bytes_.reserve(count * sizeof(Word)); }
  // Makes room for that many more; returns the first of them.
  Word* Add(std::size_t count) {
    // cppcheck-suppress shadowFunction
    const std::size_t size = bytes_.size();
    bytes_.resize(size + count * sizeof(Word));
    return reinterpret_cast<Word*>(bytes_.data() + size);
  }

 private:
  std::string bytes_;
};

}  // namespace ruxcomp::detail

#endif  // RUXCOMP_MODEL_WORDS_H_
