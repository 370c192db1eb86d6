// Entries and operands that are compiled otherwise than they look.
#include <fmt/format.h>

#include <algorithm>
#include <unordered_set>

#include "tool/text/nearest.h"
#include "tool/traps/number_text.h"
#include "tool/traps/trap_rules.h"

namespace rux {
namespace {

constexpr std::string_view kArgument = "ARG";
constexpr std::string_view kValue = "VALUE_";

// Its number is compiled into the low 24 bits of a word.
constexpr std::uint32_t kLargestType = 0xFFFFFF;

bool HasDigit(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// The names behind VALUE_ that have a meaning of their own in a SENSOR.
const std::vector<std::string>& HookNames() {
  static const std::vector<std::string> names = {"INIT", "DEINIT", "ENTRY", "EXIT", "IPMI"};
  return names;
}

class ValueTraps : public TrapRules {
 public:
  ValueTraps(const DefinedWordTable& words, TrapReport& report) : words_(words), report_(report) {}

  bool BeginSection(const SourceSection&, std::uint32_t) override { return true; }

  void See(const ScriptItem& item) override {
    switch (item.key) {
      case kKeyID:
        if (IsWord(item.first())) {
          report_.Add(MessageId::kIdWord, item,
                      "an ID that is given by a word is not compared with others", item.first());
        }
        return;
      case kKeyARGNUMBER:
        if (IsWord(item.first())) {
          report_.Add(
              MessageId::kArgnumberWord, item,
              fmt::format("{} is a word and counts as 0 when calls are checked", item.first()),
              item.first());
        }
        return;
      case kKeyREPEATER:
        return SeeRepeater(item);
      case kKeyVALUE_OF_SENSOR:
      case kKeyVALUE_OF_ACTION:
        SeeName(item);
        break;
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
      report_.Add(MessageId::kRepeaterCount, item,
                  fmt::format("{} is no plain number: nothing of this entry is compiled", count),
                  count);
    }
    for (std::size_t i = 2; i < item.parts.size(); ++i) {
      const std::string_view text = item.parts[i];
      SeeOperand(item, text);
      if (!HasPrefix(text, kArgument) || words_.Find(text)) continue;
      const NumberText number = ReadNumber(text.substr(kArgument.size()));
      if (number.is_number || number.raises) continue;
      report_.Add(MessageId::kRepeaterArgument, item,
                  fmt::format("{} names no argument and becomes 0xFFFFFFFF", text), text);
    }
  }

  void SeeValue(const ScriptItem& item) {
    if (item.value_type > kLargestType) {
      report_.Add(MessageId::kTypeTooLarge, item,
                  fmt::format("the type {} does not fit into what is compiled", item.value_type),
                  item.first());
    }
    const bool has_record = !item.shape->texts.empty() || item.shape->list.name != nullptr;
    // The library tells of what follows the type 0.
    if (!has_record && item.value_type != 0 && item.parts.size() > 1) {
      report_.Add(MessageId::kDroppedOperands, item,
                  fmt::format("values of type {} have no operands: all but the type is dropped",
                              item.value_type),
                  item.parts[1]);
    }
    ForEachOperand(item, [&](std::string_view part, Role role) {
      if (role == Role::kOperand) SeeOperand(item, part);
    });
  }

  void SeeOperand(const ScriptItem& item, std::string_view text) {
    if (!words_.has_operand_names()) return;
    const bool is_name =
        HasPrefix(text, "G_") || HasPrefix(text, kArgument) || HasPrefix(text, kValue);
    const auto word = is_name ? words_.Find(text) : std::nullopt;
    if (!word) return;
    report_.Add(MessageId::kHiddenOperand, item,
                fmt::format("{} is a defined word, too: its number {} is compiled", text, *word),
                text);
  }

  // A value of the script's own that is taken for another one, or may be.
  void SeeName(const ScriptItem& item) {
    const std::string_view name = item.name();
    if (name == kValue) {
      report_.Add(MessageId::kBareValueName, item,
                  "without a name behind it, this is compiled as one more VALUE");
    }
    if (item.kind != kKindSENSOR || !HasPrefix(name, kValue) || HasDigit(name) ||
        !names_.insert(name).second)
      return;
    const auto meant = MeantName(std::string(name.substr(kValue.size())), HookNames(), 1);
    if (!meant) return;
    report_
        .Add(MessageId::kMisspelledValue, item,
             fmt::format("{} is a value of this script's own, not {}{}", name, kValue, *meant))
        .suggestion = std::string(kValue) + *meant;
  }

  const DefinedWordTable& words_;
  TrapReport& report_;
  std::unordered_set<std::string_view> names_;  // that were looked at
};

}  // namespace

std::unique_ptr<TrapRules> MakeValueTraps(const DefinedWordTable& words, TrapReport& report) {
  return std::make_unique<ValueTraps>(words, report);
}

}  // namespace rux
