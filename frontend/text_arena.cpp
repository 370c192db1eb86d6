#include "frontend/text_arena.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

namespace ruxcomp::core {

std::string_view TextArena::Add(std::string_view text) {
  if (text.size() > left_) {
    const std::size_t size = std::max(kBlockSize, text.size());
    std::unique_ptr<char[]> block(new char[size]);  // make_unique would fill it
    blocks_.push_back(std::move(block));
    next_ = blocks_.back().get();
    left_ = size;
  }
  char* const copy = next_;
  next_ = std::copy(text.begin(), text.end(), copy);
  left_ -= text.size();
  return {copy, text.size()};
}

void TextArena::Clear() {
  blocks_.clear();
  next_ = nullptr;
  left_ = 0;
}

}  // namespace ruxcomp::core
