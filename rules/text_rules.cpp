// Values that lose a part.
#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "reader/value.h"
#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_rows.h"
#include "rules/script_item.h"

namespace rux::rules {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

// The first text beside the quotes of a part of the value; empty when there is none.
std::string_view FindTextBesideQuotes(std::string_view value) {
  std::size_t next = 0;
  for (std::size_t quote = value.find('"'); quote != kNone; quote = value.find('"', next)) {
    const std::size_t begin = value.rfind(',', quote) + 1;  // kNone + 1 is 0
    const std::string_view before = reader::Trim(value.substr(begin, quote - begin));
    if (!before.empty()) return before;
    const std::size_t closing = value.find('"', quote + 1);
    if (closing == kNone) return {};
    const std::size_t comma = value.find(',', closing);
    const std::string_view after = reader::Trim(value.substr(closing + 1, comma - closing - 1));
    if (!after.empty() || comma == kNone) return after;
    next = comma + 1;
  }
  return {};
}

// The parts, each in quotes.
std::string Quoted(const std::vector<std::string_view>& parts) {
  std::string text;
  for (const std::string_view part : parts) {
    text += fmt::format("{}\"{}\"", text.empty() ? "" : ", ", part);
  }
  return text;
}

}  // namespace

void CheckTextBesideQuotes(const ScriptItem& item, const RuleContext& context) {
  const std::string_view value = item.item->value;
  // A value that is its own first part has no quotes.
  if (item.first().size() == value.size()) return;
  const std::string_view beside = FindTextBesideQuotes(value);
  if (beside.empty()) return;
  context.report.Add(
      RuleId::kTextBesideQuotes, item,
      [&] {
        return fmt::format("text beside double quotes is dropped: what is left is {}",
                           Quoted(item.parts));
      },
      beside);
}

}  // namespace rux::rules
