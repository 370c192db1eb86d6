// IDs, lists of them, and how their numbers are written.
#include <fmt/format.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "lint/lint_list.h"
#include "lint/lint_rows.h"
#include "lint/lint_rule.h"
#include "rules/rule.h"
#include "rules/script_item.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"

namespace rux::lint {
namespace {

using rules::ItemRef;
using rules::RuleContext;
using rules::ScriptItem;

// The number that a text without anything else is.
std::optional<std::uint32_t> PlainNumber(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const language::Number number = language::ReadNumber(text);
  const bool is_plain = number.is_number && !number.has_rest && !number.is_cut;
  return is_plain ? std::optional(number.value) : std::nullopt;
}

// How numbers are written; those below 10 read the same either way.
class Base {
 public:
  // Whether a text is written otherwise than the first one.
  bool Differs(std::string_view text) {
    const auto number = PlainNumber(text);
    if (!number || *number < 10) return false;
    const bool is_hexadecimal = language::IsHexadecimal(text);
    if (!first_is_hexadecimal_) first_is_hexadecimal_ = is_hexadecimal;
    return is_hexadecimal != *first_is_hexadecimal_;
  }
  const char* first() const { return *first_is_hexadecimal_ ? "hexadecimal" : "decimal"; }
  // The same number as the first one is written.
  std::string Rewritten(std::string_view text) const {
    const std::uint32_t number = *PlainNumber(text);
    return *first_is_hexadecimal_ ? fmt::format("0x{:X}", number) : std::to_string(number);
  }
  const char* other() const { return *first_is_hexadecimal_ ? "decimal" : "hexadecimal"; }

 private:
  std::optional<bool> first_is_hexadecimal_;
};

class SectionOrderRule : public rules::Rule {
 public:
  explicit SectionOrderRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId, std::uint32_t entry) const override {
    return entry == language::ENTRY_ID;
  }
  void Check(const ScriptItem& item) override {
    const auto id = context_.words.WordOrNumber(item.first());
    if (!id) return;
    Last& last = last_[item.kind->source];
    if (last.item && last.item->file == item.file && *id < last.id) {
      context_.report
          .Add(
              RowOf(RuleId::kSectionOrder), item,
              [&] {
                return fmt::format("{} is smaller than the ID above, {}", item.first(), last.text);
              },
              item.first())
          .Note("the ID above", *last.item, last.text);
    }
    last = {*id, item.first(), item};
  }

 private:
  struct Last {
    std::uint32_t id = 0;
    std::string_view text;
    std::optional<ItemRef> item;
  };
  const RuleContext context_;
  std::unordered_map<std::uint32_t, Last> last_;  // by kinds
};

class MixedIdBaseRule : public rules::Rule {
 public:
  explicit MixedIdBaseRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId, std::uint32_t entry) const override {
    return entry == language::ENTRY_ID;
  }
  void Check(const ScriptItem& item) override {
    Base& base = bases_[item.kind->source];
    if (!base.Differs(item.first())) return;
    context_.report
        .Add(
            RowOf(RuleId::kMixedIdBase), item,
            [&] {
              return fmt::format("{} is {}, but the first ID of a {} is {}", item.first(),
                                 base.other(), item.kind->keyword, base.first());
            },
            item.first())
        .Fix(item.file->RangeOf(item.first()), base.Rewritten(item.first()));
  }

 private:
  const RuleContext context_;
  std::unordered_map<std::uint32_t, Base> bases_;  // by kinds
};

void CheckListOrder(const ScriptItem& item, const RuleContext& context) {
  std::string_view above;
  std::uint32_t highest = 0;
  for (const std::string_view part : item.parts) {
    const auto id = context.words.WordOrNumber(part);
    if (!id) continue;
    if (*id < highest) {
      context.report.Add(
          RowOf(RuleId::kListOrder), item,
          [&] { return fmt::format("{} comes after {}", part, above); }, part);
      return;
    }
    highest = *id;
    above = part;
  }
}

void CheckListBase(const ScriptItem& item, const RuleContext& context) {
  Base base;
  for (const std::string_view part : item.parts) {
    if (!base.Differs(part)) continue;
    context.report
        .Add(
            RowOf(RuleId::kMixedListBase), item,
            [&] {
              return fmt::format("{} is {} in a list of {} numbers", part, base.other(),
                                 base.first());
            },
            part)
        .Fix(item.file->RangeOf(part), base.Rewritten(part));
    return;
  }
}

// Of a text, parts look like numbers, too.
void CheckLeadingZero(const ScriptItem& item, const RuleContext& context) {
  for (const std::string_view part : item.parts) {
    const bool has_zero = part.size() > 1 && part[0] == '0' && rules::IsDigit(part[1]);
    if (!has_zero || !PlainNumber(part)) continue;
    const auto number = PlainNumber(part);
    context.report
        .Add(
            RowOf(RuleId::kLeadingZero), item,
            [&] { return fmt::format("{} is the decimal number {}", part, *number); }, part)
        .Fix(item.file->RangeOf(part), std::to_string(*number));
  }
}

bool HasNumbers(language::SectionId kind, std::uint32_t entry) {
  return rules::TakesNumbers(kind, entry) || entry == language::ENTRY_DEFINED_WORD ||
         entry == language::ENTRY_REPEATER;
}

}  // namespace

std::unique_ptr<rules::Rule> MakeSectionOrderRule(const LintContext& context) {
  return std::make_unique<SectionOrderRule>(context);
}
std::unique_ptr<rules::Rule> MakeMixedIdBaseRule(const LintContext& context) {
  return std::make_unique<MixedIdBaseRule>(context);
}
std::unique_ptr<rules::Rule> MakeListOrderRule(const LintContext& context) {
  return rules::Each<rules::Of<language::ENTRY_SENSORS>, CheckListOrder>(context);
}
std::unique_ptr<rules::Rule> MakeMixedListBaseRule(const LintContext& context) {
  return rules::Each<rules::Of<language::ENTRY_SENSORS>, CheckListBase>(context);
}
std::unique_ptr<rules::Rule> MakeLeadingZeroRule(const LintContext& context) {
  return rules::Each<HasNumbers, CheckLeadingZero>(context);
}

}  // namespace rux::lint
