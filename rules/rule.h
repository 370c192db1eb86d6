// A rule, and what each of them gets.
#ifndef RULES_RULE_H_
#define RULES_RULE_H_

#include <cstdint>
#include <memory>

#include "rules/defined_words.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"

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

}  // namespace rux::rules

#endif  // RULES_RULE_H_
