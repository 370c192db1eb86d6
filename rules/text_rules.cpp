// Values that lose a part.
#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "reader/value.h"
#include "rules/rule_list.h"

namespace rux::rules {
namespace {

// The first text beside the quotes of a part of the value; empty when there is none.
std::string_view FindTextBesideQuotes(std::string_view value) {
  while (true) {
    const std::size_t quote = value.find('"');
    const std::size_t comma = value.find(',');
    if (quote == std::string_view::npos) return {};
    if (comma < quote) {
      value.remove_prefix(comma + 1);
      continue;
    }
    const std::string_view before = reader::Trim(value.substr(0, quote));
    if (!before.empty()) return before;
    const std::size_t closing = value.find('"', quote + 1);
    if (closing == std::string_view::npos) return {};
    value.remove_prefix(closing + 1);
    const std::size_t next = value.find(',');
    const std::string_view after = reader::Trim(value.substr(0, next));
    if (!after.empty() || next == std::string_view::npos) return after;
    value.remove_prefix(next + 1);
  }
}

}  // namespace

void CheckTextBesideQuotes(const ScriptItem& item, const RuleContext& context) {
  const std::string_view value = item.item->value;
  // A value that is its own first part has no quotes.
  if (item.first().size() == value.size()) return;
  const std::string_view beside = FindTextBesideQuotes(value);
  if (beside.empty()) return;
  std::string taken;
  for (const std::string_view part : item.parts) {
    taken += fmt::format("{}\"{}\"", taken.empty() ? "" : ", ", part);
  }
  context.report.Add(RuleId::kTextBesideQuotes, item,
                     fmt::format("text beside double quotes is dropped: what is left is {}", taken),
                     beside);
}

}  // namespace rux::rules
