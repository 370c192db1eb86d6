#include "compiled/text_block.h"

#include <fmt/format.h>

#include <algorithm>

namespace rux::compiled {

std::optional<std::size_t> SizeOfTexts(std::string_view block, std::size_t stated) {
  constexpr std::size_t kMostPadding = 16;
  const std::size_t last = block.find_last_not_of('\0');
  const std::size_t terminated = last == std::string_view::npos ? 0 : last + 2;
  const std::size_t least =
      std::max(terminated, block.size() - std::min(block.size(), kMostPadding));
  if (least >= block.size()) return std::nullopt;
  return stated == least + 1 && stated < block.size() ? stated : least;
}

std::string LengthNote(std::size_t stated, std::size_t size) {
  if (stated == size) return "";
  if (stated > size) {
    return fmt::format(
        "the stated length {} is {} more than the texts take: it counts names without an index",
        stated, stated - size);
  }
  return fmt::format(
      "the stated length {} is {} less than the texts take: it does not count indices without a "
      "name",
      stated, size - stated);
}

}  // namespace rux::compiled
