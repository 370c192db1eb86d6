#include "format/columns.h"

#include <cstddef>
#include <string_view>

#include "support/utf8.h"

namespace rux::format {
namespace {

constexpr std::size_t kTab = 8;

constexpr bool IsPlain(char c) { return c >= ' ' && c < '\x7F'; }

}  // namespace

std::size_t ColumnAfter(std::string_view text, std::size_t column) {
  while (!text.empty()) {
    if (IsPlain(text.front())) {
      ++column;
      text.remove_prefix(1);
    } else if (text.front() == '\t') {
      column += kTab - column % kTab;
      text.remove_prefix(1);
    } else {
      const support::Character character = support::FirstCharacter(text);
      column += character.is_valid() ? character.Width() : 1;
      text.remove_prefix(character.bytes.size());
    }
  }
  return column;
}

}  // namespace rux::format
