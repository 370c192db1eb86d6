#include "table/cell.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
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

int Compare(const Cell& a, const Cell& b) {
  if (a.empty() || b.empty()) return static_cast<int>(a.empty()) - static_cast<int>(b.empty());
  const std::optional<double> left = NumberIn(a.texts.front());
  const std::optional<double> right = NumberIn(b.texts.front());
  if (left && right && *left != *right) return *left < *right ? -1 : 1;
  if (left.has_value() != right.has_value()) return left ? -1 : 1;
  const int order = TextOf(a).compare(TextOf(b));
  return order < 0 ? -1 : static_cast<int>(order > 0);
}

std::optional<double> NumberIn(const std::string& text) {
  const char* const end = text.data() + text.size();
  if (ruxcomp::language::IsHexadecimal(text)) {
    std::uint64_t number = 0;
    const auto [last, error] = std::from_chars(text.data() + 2, end, number, 16);
    if (error != std::errc() || last != end) return std::nullopt;
    return static_cast<double>(number);
  }
  const bool has_plus = !text.empty() && text.front() == '+';
  double number = 0;
  const auto [last, error] = std::from_chars(text.data() + (has_plus ? 1 : 0), end, number);
  if (error != std::errc() || last != end || !std::isfinite(number)) return std::nullopt;
  return number;
}

}  // namespace rux::table
