// What a rule is.
#ifndef RULES_RULE_H_
#define RULES_RULE_H_

#include <cstdint>
#include <memory>

#include "rules/defined_words.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/entries.h"

namespace rux::rules {

struct RuleContext {
  const DefinedWords& words;
  RuleReport& report;
};

// A rule gets the items that it wants, once, in the order in which the library reads them. There
// may be millions: what is done for each must be cheap. Items that the library rejects are among
// them.
class Rule {
 public:
  virtual ~Rule() = default;

  // Whether the rule is about items with such an entry; asked once for each kind and entry. An
  // entry of 0 stands for the keys that the kind does not take.
  virtual bool WantsItems(language::SectionId, std::uint32_t) const { return false; }
  // Whether BeginSection and EndSection are called for sections of the kind.
  virtual bool WantsSections(language::SectionId) const { return false; }

  virtual void BeginSection(const ScriptSection&, language::SectionId) {}
  virtual void Check(const ScriptItem&) {}
  virtual void EndSection() {}
  virtual void EndScript(const Script&) {}
};

using MakeRule = std::unique_ptr<Rule> (*)(const RuleContext& context);

// A rule that needs no more than the item.
using WantsItems = bool (*)(language::SectionId kind, std::uint32_t entry);
using CheckItem = void (*)(const ScriptItem& item, const RuleContext& context);

template <WantsItems wants, CheckItem check>
class ItemRule : public Rule {
 public:
  explicit ItemRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId kind, std::uint32_t entry) const override {
    return wants(kind, entry);
  }
  void Check(const ScriptItem& item) override { check(item, context_); }

 private:
  const RuleContext context_;
};

// What items an item rule is about.
inline bool Any(language::SectionId, std::uint32_t) { return true; }
template <std::uint32_t... entries>
bool Of(language::SectionId, std::uint32_t entry) {
  return ((entry == entries) || ...);
}
template <language::SectionId... kinds>
bool In(language::SectionId kind, std::uint32_t) {
  return ((kind == kinds) || ...);
}
// Sections that take any key.
inline constexpr WantsItems kOfPlainNames =
    In<language::SECTION_PROPERTY, language::SECTION_REPEATER, language::SECTION_DEFINE,
       language::SECTION_IFDEF>;
template <std::uint32_t payload>
bool With(language::SectionId, std::uint32_t entry) {
  return language::PayloadOf(entry) == payload;
}

// Numbers, lists of them, and values.
inline bool TakesNumbers(language::SectionId, std::uint32_t entry) {
  return language::IsNumericString(entry) || language::IsNumericList(entry) ||
         language::PayloadOf(entry) == language::PAYLOAD_VALUE;
}

template <WantsItems wants, CheckItem check>
std::unique_ptr<Rule> Each(const RuleContext& context) {
  return std::make_unique<ItemRule<wants, check>>(context);
}

}  // namespace rux::rules

#endif  // RULES_RULE_H_
