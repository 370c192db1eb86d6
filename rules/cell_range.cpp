#include "rules/cell_range.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include "reader/value.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/symbols.h"

namespace rux::rules {
namespace {

namespace language = ruxcomp::language;

bool IsForeignSeparator(std::string_view text) {
  constexpr std::string_view kSeparators[] = {"..", "...", "-", "--", ",", ":", "to"};
  return std::find(std::begin(kSeparators), std::end(kSeparators), ruxcomp::reader::Trim(text)) !=
         std::end(kSeparators);
}

}  // namespace

std::string MeantCells(std::string_view key) {
  constexpr char kDigits[] = "0123456789";
  const std::string_view first = key.substr(0, key.find_first_not_of(kDigits));
  const std::string_view last = key.substr(key.find_last_not_of(kDigits) + 1);
  if (first.empty() || last.empty() || first.size() + last.size() >= key.size()) return "";
  const std::string_view between =
      key.substr(first.size(), key.size() - first.size() - last.size());
  if (!IsForeignSeparator(between)) return "";
  const auto low = language::ReadNumber(first).value;
  const auto high = language::ReadNumber(last).value;
  const bool are_cells = low <= high && high < language::kTableCells;
  return are_cells ? fmt::format("{}.{}", low, high) : "";
}

}  // namespace rux::rules
