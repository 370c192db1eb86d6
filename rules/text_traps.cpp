// Values of which a part gets lost.
#include <fmt/format.h>

#include <algorithm>

#include "rules/trap_rules.h"

namespace rux::rules {
namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view Trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

// The first text that stands beside the quotes of a part of the value; empty when there is none.
std::string_view TextBesideQuotes(std::string_view value) {
  while (true) {
    const std::size_t quote = value.find('"');
    const std::size_t comma = value.find(',');
    if (quote == std::string_view::npos) return {};
    if (comma < quote) {
      value.remove_prefix(comma + 1);
      continue;
    }
    const std::string_view before = Trimmed(value.substr(0, quote));
    if (!before.empty()) return before;
    const std::size_t closing = value.find('"', quote + 1);
    if (closing == std::string_view::npos) return {};
    value.remove_prefix(closing + 1);
    const std::size_t next = value.find(',');
    const std::string_view after = Trimmed(value.substr(0, next));
    if (!after.empty() || next == std::string_view::npos) return after;
    value.remove_prefix(next + 1);
  }
}

class TextTraps : public TrapRules {
 public:
  explicit TextTraps(TrapReport& report) : report_(report) {}

  bool BeginSection(const sources::SourceSection&, std::uint32_t) override { return true; }

  void See(const ScriptItem& item) override {
    const std::string_view value = item.item->value;
    // A value that is its own first part has no quotes.
    if (item.first().size() == value.size()) return;
    const std::string_view beside = TextBesideQuotes(value);
    if (beside.empty()) return;
    std::string taken;
    for (const std::string_view part : item.parts) {
      taken += fmt::format("{}\"{}\"", taken.empty() ? "" : ", ", part);
    }
    report_.Add(kTextBesideQuotes, item,
                fmt::format("text beside double quotes is dropped: what is left is {}", taken),
                beside);
  }

 private:
  TrapReport& report_;
};

}  // namespace

std::unique_ptr<TrapRules> MakeTextTraps(const DefinedWordTable&, TrapReport& report) {
  return std::make_unique<TextTraps>(report);
}

}  // namespace rux::rules
