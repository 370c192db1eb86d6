// Values of which a part gets lost.
#include <fmt/format.h>

#include "tool/traps/trap_rules.h"

namespace rux {
namespace {

constexpr std::string_view kBlanks = " \t";

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(kBlanks) == std::string_view::npos;
}

// Whether something stands beside the first quotes of a part of the value.
bool HasTextBesideQuotes(std::string_view value) {
  while (true) {
    const std::size_t quote = value.find('"');
    const std::size_t comma = value.find(',');
    if (quote == std::string_view::npos) return false;
    if (comma < quote) {
      value.remove_prefix(comma + 1);
      continue;
    }
    const std::size_t closing = value.find('"', quote + 1);
    if (!IsBlank(value.substr(0, quote))) return true;
    if (closing == std::string_view::npos) return false;
    value.remove_prefix(closing + 1);
    const std::size_t next = value.find(',');
    if (!IsBlank(value.substr(0, next))) return true;
    if (next == std::string_view::npos) return false;
    value.remove_prefix(next + 1);
  }
}

class TextTraps : public TrapRules {
 public:
  explicit TextTraps(TrapReport& report) : report_(report) {}

  bool BeginSection(const SourceSection&, std::uint32_t) override { return true; }

  void See(const ScriptItem& item) override {
    const std::string_view value = item.item->value;
    // A value that is its own first part has no quotes.
    if (item.first().size() == value.size() || !HasTextBesideQuotes(value)) return;
    std::string taken;
    for (const std::string_view part : item.parts) {
      taken += fmt::format("{}\"{}\"", taken.empty() ? "" : ", ", part);
    }
    report_.Add(MessageId::kTextBesideQuotes, item,
                fmt::format("text beside double quotes is dropped: what is left is {}", taken));
  }

 private:
  TrapReport& report_;
};

}  // namespace

std::unique_ptr<TrapRules> MakeTextTraps(const DefinedWordTable&, TrapReport& report) {
  return std::make_unique<TextTraps>(report);
}

}  // namespace rux
