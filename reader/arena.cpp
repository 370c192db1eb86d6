#include "reader/arena.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace ruxcomp::reader {
namespace {

constexpr std::size_t kSmallestBlock = std::size_t{1} << 10;
constexpr std::size_t kLargestBlock = std::size_t{1} << 24;  // of more than one text

bool IsWithin(const char* at, const char* begin, std::size_t size) {
  const std::less<> is_before;
  return !is_before(at, begin) && !is_before(begin + size, at);
}

}  // namespace

std::string_view Arena::Join(const std::vector<std::string_view>& pieces) {
  if (pieces.size() == 1) return pieces.front();
  std::size_t size = 0;
  for (const std::string_view piece : pieces) size += piece.size();
  // The byte before the text is from the place before it in the file.
  char* const begin = Allocate(size + 1) + 1;
  std::uint32_t position = PositionOf(begin);
  runs_.push_back({position - 1, OffsetOf(pieces.front().data()) - 1});
  char* at = begin;
  for (const std::string_view piece : pieces) {
    AddRuns(piece, position);
    position += static_cast<std::uint32_t>(piece.size());
    at = std::copy(piece.begin(), piece.end(), at);
  }
  return {begin, size};
}

std::uint32_t Arena::OffsetOf(const char* at) const {
  if (IsInText(at)) return static_cast<std::uint32_t>(at - text_.data());
  const std::uint32_t position = PositionOf(at);
  const Run& run = *RunAt(position);
  return run.offset + (position - run.at);
}

bool Arena::IsInText(const char* at) const { return IsWithin(at, text_.data(), text_.size()); }

// There are few blocks, as each is larger than the one before it.
std::uint32_t Arena::PositionOf(const char* at) const {
  const auto block = std::find_if(blocks_.rbegin(), blocks_.rend(), [&](const Block& candidate) {
    return IsWithin(at, candidate.bytes.get(), candidate.used - 1);
  });
  return block->start + static_cast<std::uint32_t>(at - block->bytes.get());
}

std::vector<Arena::Run>::const_iterator Arena::RunAt(std::uint32_t position) const {
  const auto starts_after = [](std::uint32_t wanted, const Run& run) { return wanted < run.at; };
  return std::upper_bound(runs_.begin(), runs_.end(), position, starts_after) - 1;
}

char* Arena::Allocate(std::size_t size) {
  if (blocks_.empty()) AddBlock(std::max(size, kSmallestBlock));
  if (blocks_.back().size - blocks_.back().used < size) {
    const std::size_t twice = std::size_t{2} * blocks_.back().size;
    AddBlock(std::max(size, std::min(twice, kLargestBlock)));
  }
  Block& block = blocks_.back();
  char* const begin = block.bytes.get() + block.used;
  block.used += static_cast<std::uint32_t>(size);
  return begin;
}

void Arena::AddBlock(std::size_t size) {
  const std::uint32_t start = blocks_.empty() ? 0 : blocks_.back().start + blocks_.back().used;
  blocks_.push_back(
      {std::unique_ptr<char[]>(new char[size]), static_cast<std::uint32_t>(size), 0, start});
}

// Notes where a piece is from that is copied to `position`.
void Arena::AddRuns(std::string_view piece, std::uint32_t position) {
  if (IsInText(piece.data())) {
    runs_.push_back({position, OffsetOf(piece.data())});
    return;
  }
  const std::uint32_t from = PositionOf(piece.data());
  // By index: the new runs are added to the same list.
  auto index = static_cast<std::size_t>(RunAt(from) - runs_.begin());
  const std::size_t known = runs_.size();
  for (; index < known && runs_[index].at < from + piece.size(); ++index) {
    const Run run = runs_[index];
    const std::uint32_t start = std::max(run.at, from);
    runs_.push_back({position + (start - from), run.offset + (start - run.at)});
  }
}

}  // namespace ruxcomp::reader
