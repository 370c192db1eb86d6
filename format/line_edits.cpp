#include "format/line_edits.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace rux::format {
namespace {

// Takes the first line, with its end.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
  const std::string_view line = text.substr(0, size);
  text.remove_prefix(size);
  return line;
}

// What both begin with; never a part of a character, of which formatting changes none.
std::size_t CommonSize(std::string_view one, std::string_view other) {
  const std::size_t most = std::min(one.size(), other.size());
  return static_cast<std::size_t>(
      std::mismatch(one.begin(), one.begin() + static_cast<std::ptrdiff_t>(most), other.begin())
          .first -
      one.begin());
}

std::size_t CommonEnd(std::string_view one, std::string_view other) {
  const std::size_t most = std::min(one.size(), other.size());
  return static_cast<std::size_t>(
      std::mismatch(one.rbegin(), one.rbegin() + static_cast<std::ptrdiff_t>(most), other.rbegin())
          .first -
      one.rbegin());
}

}  // namespace

std::vector<LineEdit> LineEdits(std::string_view text, std::string_view formatted) {
  std::vector<LineEdit> edits;
  std::size_t begin = 0;
  for (std::uint32_t number = 1; !text.empty() && !formatted.empty(); ++number) {
    std::string_view line = TakeLine(text);
    std::string_view wanted = TakeLine(formatted);
    const std::size_t next = begin + line.size();
    if (line != wanted) {
      const std::size_t same = CommonSize(line, wanted);
      line.remove_prefix(same);
      wanted.remove_prefix(same);
      const std::size_t same_end = CommonEnd(line, wanted);
      line.remove_suffix(same_end);
      wanted.remove_suffix(same_end);
      const auto at = static_cast<std::uint32_t>(begin + same);
      edits.push_back({number, {at, at + static_cast<std::uint32_t>(line.size())}, {}});
      edits.back().text = wanted;
    }
    begin = next;
  }
  return edits;
}

}  // namespace rux::format
