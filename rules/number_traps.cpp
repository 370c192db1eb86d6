// Numbers that are read otherwise than they look.
#include <fmt/format.h>

#include "rules/number_text.h"
#include "rules/trap_rules.h"

namespace rux::rules {
namespace {

// Whether the text is nothing but digits that fit: almost all are.
bool IsPlainNumber(std::string_view text) {
  constexpr std::size_t kSurelyFits = 9;
  if (text.size() > kSurelyFits) return false;
  for (const char c : text) {
    if (c < '0' || c > '9') return false;
  }
  return true;
}

class NumberTraps : public TrapRules {
 public:
  NumberTraps(const DefinedWordTable& words, TrapReport& report) : words_(words), report_(report) {}

  bool BeginSection(const sources::SourceSection&, std::uint32_t) override { return true; }

  void See(const ScriptItem& item) override {
    switch (compiled::PayloadClassOf(item.key)) {
      case compiled::PayloadClass::kNumber:
        return SeeEntry(item, item.first());
      case compiled::PayloadClass::kText:
        if (compiled::IsNumeric(item.key)) SeeEntry(item, item.first());
        return;
      case compiled::PayloadClass::kList:
        for (const std::string_view part : item.parts) See(item, part);
        return;
      case compiled::PayloadClass::kValue:
        return ForEachOperand(item, [&](std::string_view part, compiled::Role role) {
          if (role == compiled::Role::kOperand || role == compiled::Role::kNumber)
            SeeOperand(item, part);
        });
      case compiled::PayloadClass::kRepeater:
        SeeEntry(item, item.first());
        for (std::size_t i = 2; i < item.parts.size(); ++i) SeeOperand(item, item.parts[i]);
        return;
    }
  }

 private:
  // Returns what there is to know of the number, if that is nothing to warn of.
  NumberText See(const ScriptItem& item, std::string_view text) {
    if (IsPlainNumber(text)) return {};
    const NumberText number = ReadNumber(text);
    // Of a defined word that looks like a number, its definition tells.
    if (!number.is_number || words_.Find(text)) return {};
    if (number.has_rest) {
      report_.Add(
          kTrailingText, item,
          fmt::format("{} is read as {}: what follows the number is ignored", text, number.value),
          text);
    } else if (number.is_cut) {
      report_.Add(kNumberTooLarge, item,
                  fmt::format("{} has more than 32 bits: it becomes {}", text, number.value), text);
    } else if (number.value == kUnfindable) {
      report_.Add(
          kUnfindableNumber, item,
          fmt::format("{} cannot be looked up at run time: it stands for \"not found\"", text),
          text);
    } else {
      return number;
    }
    return {};
  }

  void SeeEntry(const ScriptItem& item, std::string_view text) {
    const NumberText number = See(item, text);
    if (!number.is_number || !number.is_negative) return;
    report_.Add(kNegativeNumber, item,
                fmt::format("{} is stored as {} (0x{:X})", text, number.value, number.value), text);
  }

  void SeeOperand(const ScriptItem& item, std::string_view text) {
    constexpr std::string_view kArgument = "ARG";
    if (!HasPrefix(text, kArgument)) {
      See(item, text);
      return;
    }
    const NumberText number = ReadNumber(text.substr(kArgument.size()));
    if (!number.is_number || !number.has_rest) return;
    report_.Add(
        kTrailingText, item,
        fmt::format("{} is read as ARG{}: what follows the number is ignored", text, number.value),
        text);
  }

  const DefinedWordTable& words_;
  TrapReport& report_;
};

}  // namespace

std::unique_ptr<TrapRules> MakeNumberTraps(const DefinedWordTable& words, TrapReport& report) {
  return std::make_unique<NumberTraps>(words, report);
}

}  // namespace rux::rules
