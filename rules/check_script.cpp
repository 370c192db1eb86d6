#include "rules/check_script.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "reader/script.h"
#include "reader/value.h"
#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/keys.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"

namespace rux::rules {
namespace {

using language::SectionKind;

// The entry that takes a key in a kind of sections, and the rules about it.
struct RowRules {
  std::uint32_t entry;
  std::vector<Rule*> rules;
};

struct KindRules {
  std::vector<Rule*> of_sections;
  std::vector<RowRules> rows;
};

// Shows a script to all rules.
class Walk {
 public:
  Walk(const RuleContext& context, std::vector<std::unique_ptr<Rule>> more)
      : words_(context.words) {
    for (const MakeRule make : kRules) rules_.push_back(make(context));
    std::move(more.begin(), more.end(), std::back_inserter(rules_));
  }

  void Show(const ScriptSection& section) {
    const std::string_view name = section.section->name;
    if (kind_ == nullptr || name != kind_->keyword) kind_ = language::FindKind(name);
    if (kind_ == nullptr) return;
    const KindRules& found = RulesOfKind();
    for (Rule* rule : found.of_sections) rule->BeginSection(section, kind_->source);
    for (std::uint32_t i = 0; i < section.section->item_count; ++i) {
      const ruxcomp::reader::Item& item = section.section->items[i];
      Show({section.file, section.section, &item},
           found.rows[language::FindKeyRow(*kind_, item.key, i)]);
    }
    for (Rule* rule : found.of_sections) rule->EndSection();
  }

  void End(const Script& script) {
    for (const auto& rule : rules_) rule->EndScript(script);
  }

 private:
  const KindRules& RulesOfKind() {
    KindRules& found = kinds_[static_cast<std::size_t>(kind_ - language::kSectionKinds)];
    if (found.rows.empty()) FindRules(found);
    return found;
  }

  void FindRules(KindRules& found) const {
    for (const auto& rule : rules_) {
      if (rule->WantsSections(kind_->source)) found.of_sections.push_back(rule.get());
    }
    for (std::size_t row = 0; row <= language::KeyRowCount(*kind_); ++row) {
      RowRules& added = found.rows.emplace_back(RowRules{language::EntryOfRow(*kind_, row), {}});
      for (const auto& rule : rules_) {
        if (rule->WantsItems(kind_->source, added.entry)) added.rules.push_back(rule.get());
      }
    }
  }

  void Show(const ItemRef& place, const RowRules& row) {
    parts_.clear();
    ruxcomp::reader::ForEachPart(*place.item,
                                 [&](std::string_view part) { parts_.push_back(part); });
    ScriptItem item{place, kind_, row.entry, parts_};
    SetRecord(item);
    for (Rule* rule : row.rules) rule->Check(item);
  }

  void SetRecord(ScriptItem& item) const {
    const std::uint32_t payload = language::PayloadOf(item.entry);
    if (payload == language::PAYLOAD_REPEATER) item.record = &language::kRepeaterRecord;
    if (payload != language::PAYLOAD_VALUE) return;
    const auto type = words_.Find(item.first());
    if (!type) return;
    item.type = *type;
    item.record = &language::FindValueType(*type);
    item.first_field = 1;
  }

  const DefinedWords& words_;
  std::vector<std::unique_ptr<Rule>> rules_;
  std::array<KindRules, language::kSectionKindCount> kinds_;  // filled when first needed
  const SectionKind* kind_ = nullptr;                         // of the section that is shown
  std::vector<std::string_view> parts_;                       // of the item that is shown
};

}  // namespace

Warnings CheckScript(const Script& script, Keeping keeping, const MakeMoreRules& more) {
  if (!IsComplete(script)) return {};
  RuleReport report(std::move(keeping), HasRepeatedIncludes(script));
  const DefinedWords words(script, report);
  const RuleContext context{words, report};
  Walk walk(context, more(context));
  for (const ScriptSection& section : script.sections()) walk.Show(section);
  walk.End(script);
  return report.Take();
}

}  // namespace rux::rules
