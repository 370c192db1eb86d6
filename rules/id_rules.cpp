// IDs that are given by words, which the library does not compare.
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string_view>
#include <tuple>
#include <vector>

#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/sections.h"

namespace rux::rules {
namespace {

class IdRule : public Rule {
 public:
  explicit IdRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId, std::uint32_t entry) const override {
    return entry == language::ENTRY_ID;
  }

  void Check(const ScriptItem& item) override {
    const auto number = context_.words.WordOrNumber(item.first());
    if (!number) return;
    const bool is_word = context_.words.IsOnlyWord(item.first());
    has_words_ |= is_word;
    given_.push_back({item.kind->source, *number, is_word, item, item.first()});
  }

  void EndScript(const Script&) override {
    if (!has_words_) return;
    std::vector<const Given*> sorted;
    sorted.reserve(given_.size());
    for (const Given& given : given_) sorted.push_back(&given);
    std::stable_sort(sorted.begin(), sorted.end(), [](const Given* a, const Given* b) {
      return std::tuple(a->kind, a->number) < std::tuple(b->kind, b->number);
    });
    const Given* before = nullptr;
    for (const Given* given : sorted) {
      const bool is_again =
          before != nullptr && before->kind == given->kind && before->number == given->number;
      is_again ? CheckTwice(*given, *before) : CheckOnce(*given);
      before = given;
    }
  }

 private:
  struct Given {
    language::SectionId kind;
    std::uint32_t number;
    bool is_word;
    ItemRef item;
    std::string_view text;
  };

  void CheckOnce(const Given& given) {
    if (!given.is_word) return;
    context_.report.Add(
        RuleId::kIdWord, given.item,
        [&] {
          return fmt::format("the ID is given by a word; its number is 0x{:X}", given.number);
        },
        given.text);
  }

  // The library compares those that are written as numbers.
  void CheckTwice(const Given& given, const Given& before) {
    if (!given.is_word && !before.is_word) return;
    context_.report
        .Add(
            RuleId::kDuplicateId, given.item,
            [&] {
              return fmt::format("another {} also has the ID 0x{:X}",
                                 language::KindOf(given.kind).keyword, given.number);
            },
            given.text)
        .Note("first given here", before.item, before.text);
  }

  const RuleContext context_;
  std::vector<Given> given_;
  bool has_words_ = false;
};

}  // namespace

std::unique_ptr<Rule> MakeIdRule(const RuleContext& context) {
  return std::make_unique<IdRule>(context);
}

}  // namespace rux::rules
