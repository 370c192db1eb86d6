// Entries and operands that are compiled otherwise than they look.
#include <fmt/format.h>

#include <algorithm>

#include "rules/number_text.h"
#include "rules/trap_rules.h"

namespace rux::rules {
namespace {

constexpr std::string_view kArgument = "ARG";
constexpr std::string_view kValue = "VALUE_";

// Its number is compiled into the low 24 bits of a word.
constexpr std::uint32_t kLargestType = 0xFFFFFF;

class ValueTraps : public TrapRules {
 public:
  ValueTraps(const DefinedWordTable& words, TrapReport& report) : words_(words), report_(report) {}

  bool BeginSection(const sources::SourceSection&, std::uint32_t) override { return true; }

  void See(const ScriptItem& item) override {
    switch (item.key) {
      case compiled::kKeyID:
        if (IsWord(item.first())) {
          report_.Add(kIdWord, item, "an ID that is given by a word is not compared with others",
                      item.first());
        }
        return;
      case compiled::kKeyARGNUMBER:
        if (IsWord(item.first())) {
          report_.Add(
              kArgnumberWord, item,
              fmt::format("{} is a word and counts as 0 when calls are checked", item.first()),
              item.first());
        }
        return;
      case compiled::kKeyREPEATER:
        return SeeRepeater(item);
      default:
        break;
    }
    if (item.shape != nullptr) SeeValue(item);
  }

 private:
  bool IsWord(std::string_view text) const {
    return !text.empty() && (text.front() < '0' || text.front() > '9') &&
           !ReadNumber(text).is_number && words_.Find(text);
  }

  void SeeRepeater(const ScriptItem& item) {
    if (item.parts.size() < 2) return;  // the library refuses it
    const std::string_view count = item.first();
    if (!count.empty() && !ReadNumber(count).is_number) {
      report_.Add(kRepeaterCount, item,
                  fmt::format("{} is no plain number: nothing of this entry is compiled", count),
                  count);
    }
    // As calls outside of actions may: those that are handed on are counted from 1.
    const auto last_argument = static_cast<std::uint32_t>(
        std::count_if(item.parts.begin() + 2, item.parts.end(),
                      [](std::string_view text) { return HasPrefix(text, kArgument); }));
    for (std::size_t i = 2; i < item.parts.size(); ++i) {
      const std::string_view text = item.parts[i];
      SeeOperand(item, text);
      if (HasPrefix(text, kArgument) && !words_.Find(text)) SeeArgument(item, text, last_argument);
    }
  }

  void SeeArgument(const ScriptItem& item, std::string_view text, std::uint32_t last) {
    const NumberText number = ReadNumber(text.substr(kArgument.size()));
    if (number.raises || (number.is_number && number.value <= last)) return;
    report_.Add(kRepeaterArgument, item,
                number.is_number ? fmt::format("{} names an argument that nobody hands over", text)
                                 : fmt::format("{} names no argument and becomes 0xFFFFFFFF", text),
                text);
  }

  void SeeValue(const ScriptItem& item) {
    if (item.value_type > kLargestType) {
      report_.Add(kTypeTooLarge, item,
                  fmt::format("the type {} does not fit into what is compiled", item.value_type),
                  item.first());
    }
    const bool has_record = !item.shape->texts.empty() || item.shape->list.name != nullptr;
    // The library tells of what follows the type 0.
    if (!has_record && item.value_type != 0 && item.parts.size() > 1) {
      report_.Add(kDroppedOperands, item,
                  fmt::format("values of type {} have no operands: all but the type is dropped",
                              item.value_type),
                  item.parts[1]);
    }
    ForEachOperand(item, [&](std::string_view part, compiled::Role role) {
      if (role == compiled::Role::kOperand || role == compiled::Role::kLocalValue)
        SeeOperand(item, part);
    });
  }

  void SeeOperand(const ScriptItem& item, std::string_view text) {
    if (!words_.has_operand_names()) return;
    const bool is_name =
        HasPrefix(text, "G_") || HasPrefix(text, kArgument) || HasPrefix(text, kValue);
    const auto word = is_name ? words_.Find(text) : std::nullopt;
    if (!word) return;
    report_.Add(kHiddenOperand, item,
                fmt::format("{} is a defined word, too: its number {} is compiled", text, *word),
                text);
  }

  const DefinedWordTable& words_;
  TrapReport& report_;
};

}  // namespace

std::unique_ptr<TrapRules> MakeValueTraps(const DefinedWordTable& words, TrapReport& report) {
  return std::make_unique<ValueTraps>(words, report);
}

}  // namespace rux::rules
