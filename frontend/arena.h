// Memory for many small things that are released together.
#ifndef FRONTEND_ARENA_H_
#define FRONTEND_ARENA_H_

#include <cstddef>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "frontend/text.h"

namespace ruxcomp::core {

// Keeps texts and objects in a few large blocks of memory: objects from the front of a block, texts
// from its back, so that the alignment of objects leaves no gaps between texts. Nothing in it can
// be released by itself, and no destructor runs.
class Arena {
 public:
  // A copy of the text, with a zero after it, that stays until Clear.
  Text Add(std::string_view text);

  // Turns a part of a text in an arena into a text of its own, in place: the character after the
  // part becomes its terminating zero.
  static Text Cut(std::string_view part) {
    if (part.empty()) return {};
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the arena handed it out
    const_cast<char*>(part.data())[part.size()] = '\0';
    return {part.data(), part.size()};
  }

  // A list of these views; the texts themselves are not copied.
  TextList Add(const std::vector<std::string_view>& texts);

  // A new object that stays until Clear.
  template <class T, class... Arguments>
  T& Make(Arguments&&... arguments) {
    static_assert(std::is_trivially_destructible_v<T>, "its destructor would never run");
    return *::new (Room<T>(1)) T(std::forward<Arguments>(arguments)...);
  }

  // That many new objects side by side.
  template <class T>
  T* MakeArray(std::size_t count) {
    static_assert(std::is_trivially_destructible_v<T>, "their destructors would never run");
    T* const first = static_cast<T*>(Room<T>(count));
    std::uninitialized_default_construct_n(first, count);
    return first;
  }

  void Clear();

 private:
  static constexpr std::size_t kBlockSize = std::size_t{64} << 10;
  static constexpr std::size_t kAlignment = alignof(std::max_align_t);

  template <class T>
  void* Room(std::size_t count) {
    static_assert(alignof(T) <= kAlignment);
    const std::size_t gap = Gap(alignof(T));
    const std::size_t size = count * sizeof(T);
    if (gap + size > Left()) return AddBlock(size);
    front_ += gap + size;
    return front_ - size;
  }

  std::size_t Left() const { return static_cast<std::size_t>(back_ - front_); }

  // How many bytes lie before the next address of that alignment.
  std::size_t Gap(std::size_t alignment) const {
    return (alignment - used_in_front() % alignment) % alignment;
  }
  std::size_t used_in_front() const { return static_cast<std::size_t>(front_ - block_); }

  // Room of that size at the front of a new block.
  char* AddBlock(std::size_t size);

  std::vector<std::unique_ptr<char[]>> blocks_;
  char* block_ = nullptr;  // the one that is being filled
  char* front_ = nullptr;  // its free bytes begin here
  char* back_ = nullptr;   // and end here
};

}  // namespace ruxcomp::core

#endif  // FRONTEND_ARENA_H_
