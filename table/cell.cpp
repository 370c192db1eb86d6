#include "table/cell.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "ruxcomp/language/number.h"

namespace rux::table {

Cell TextCell(std::string text) { return {{std::move(text)}, std::nullopt, false}; }
Cell ListCell(std::vector<std::string> texts) { return {std::move(texts), std::nullopt, true}; }

std::string TextOf(const Cell& cell) {
  std::string text;
  for (const std::string& each : cell.texts) text += (text.empty() ? "" : ", ") + each;
  return text;
}

RowCells RowOf(std::vector<Cell> cells) {
  RowCells row;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (!cells[i].empty()) row.push_back({i, std::move(cells[i])});
  }
  return row;
}

const Cell& CellIn(const RowCells& cells, std::size_t column) {
  static const Cell empty;
  const auto found = std::lower_bound(
      cells.begin(), cells.end(), column,
      [](const PlacedCell& cell, std::size_t wanted) { return cell.column < wanted; });
  return found == cells.end() || found->column != column ? empty : found->cell;
}

int Compare(const Cell& a, const Cell& b) {
  if (a.empty() || b.empty()) return static_cast<int>(a.empty()) - static_cast<int>(b.empty());
  const std::optional<double> left = NumberIn(a.texts.front());
  const std::optional<double> right = NumberIn(b.texts.front());
  if (left && right && *left != *right) return *left < *right ? -1 : 1;
  if (left.has_value() != right.has_value()) return left ? -1 : 1;
  const int order = TextOf(a).compare(TextOf(b));
  return order < 0 ? -1 : static_cast<int>(order > 0);
}

std::optional<LeadingNumber> LeadingNumberIn(std::string_view text) {
  if (ruxcomp::language::IsHexadecimal(text)) {
    const char* const end = text.data() + text.size();
    std::uint64_t number = 0;
    const auto [last, error] = std::from_chars(text.data() + 2, end, number, 16);
    if (error != std::errc() || last != end) return std::nullopt;
    return LeadingNumber{static_cast<double>(number), ""};
  }
  constexpr std::string_view kFirstOfNumber = "0123456789.";
  const bool has_plus =
      text.size() > 1 && text[0] == '+' && kFirstOfNumber.find(text[1]) != std::string_view::npos;
  if (has_plus) text.remove_prefix(1);
  double number = 0;
  const auto [last, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || !std::isfinite(number)) return std::nullopt;
  return LeadingNumber{number, text.substr(static_cast<std::size_t>(last - text.data()))};
}

std::optional<double> NumberIn(std::string_view text) {
  const std::optional<LeadingNumber> leading = LeadingNumberIn(text);
  return leading && leading->rest.empty() ? std::optional(leading->number) : std::nullopt;
}

}  // namespace rux::table
