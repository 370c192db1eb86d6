#include "lists/list.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace rux::lists {

const std::string& ListRow::CellIn(std::size_t column) const {
  static const std::string empty;
  const auto found = std::lower_bound(
      cells.begin(), cells.end(), column,
      [](const ListCell& cell, std::size_t wanted) { return cell.column < wanted; });
  return found == cells.end() || found->column != column ? empty : found->text;
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kListBlanks = " \t\r\n\v\f";
  const std::size_t first = text.find_first_not_of(kListBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kListBlanks) - first + 1);
}

bool IsNothing(std::string_view text) {
  const std::string_view trimmed = Trimmed(text);
  for (const std::string_view nothing : {"", "na", "n/a", "NA", "N/A", "-"}) {
    if (trimmed == nothing) return true;
  }
  return false;
}

}  // namespace rux::lists
