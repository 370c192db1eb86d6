#include "frontend/text_arena.h"

#include <algorithm>
#include <string_view>

std::string_view TextArena::Add(std::string_view text) {
  if (text.size() > left_) {
    left_ = std::max(kBlockSize, text.size());
    blocks_.emplace_back(new char[left_]);
    next_ = blocks_.back().get();
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
