// The texts of a script's items until they are checked.
#ifndef FRONTEND_TEXT_ARENA_H_
#define FRONTEND_TEXT_ARENA_H_

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace ruxcomp::core {

// Keeps many texts in few pieces of memory, one after the other. A single text cannot be
// released: all go at once.
class TextArena {
 public:
  // A copy of the text that stays until Clear.
  std::string_view Add(std::string_view text);

  void Clear();

 private:
  static constexpr std::size_t kBlockSize = std::size_t{64} << 10;

  std::vector<std::unique_ptr<char[]>> blocks_;
  char* next_ = nullptr;  // the free part of the last block
  std::size_t left_ = 0;
};

}  // namespace ruxcomp::core

#endif  // FRONTEND_TEXT_ARENA_H_
