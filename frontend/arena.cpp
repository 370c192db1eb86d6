#include "frontend/arena.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "frontend/text.h"

namespace ruxcomp::core {

Text Arena::Add(std::string_view text) {
  if (text.empty()) return {};
  const std::size_t size = text.size() + 1;
  char* copy = nullptr;
  if (size > Left()) {
    copy = AddBlock(size);
  } else {
    copy = back_ -= size;
  }
  *std::copy(text.begin(), text.end(), copy) = '\0';
  return {copy, text.size()};
}

TextList Arena::Add(const std::vector<std::string_view>& texts) {
  auto* const first = MakeArray<std::string_view>(texts.size());
  std::copy(texts.begin(), texts.end(), first);
  return {first, texts.size()};
}

// What takes more than a quarter of a block gets one to itself; filling goes on in the other.
char* Arena::AddBlock(std::size_t size) {
  const bool is_large = size > kBlockSize / 4;
  const std::size_t block_size = is_large ? size : kBlockSize;
  std::unique_ptr<char[]> block(new char[block_size]);  // make_unique would fill it
  blocks_.push_back(std::move(block));
  char* const room = blocks_.back().get();
  if (!is_large) {
    block_ = room;
    front_ = room + size;
    back_ = room + block_size;
  }
  return room;
}

void Arena::Clear() {
  blocks_.clear();
  block_ = front_ = back_ = nullptr;
}

}  // namespace ruxcomp::core
