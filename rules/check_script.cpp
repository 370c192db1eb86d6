#include "rules/check_script.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "reader/value.h"
#include "rules/rule_list.h"

namespace rux::rules {
namespace {

using language::SectionKind;

// The rules that are interested in a kind of sections.
struct KindRules {
  std::vector<Rule*> of_sections;
  std::vector<std::vector<Rule*>> of_items;  // by the row that takes the key
};

// Shows a script to all rules.
class Walk {
 public:
  explicit Walk(const RuleContext& context) : words_(context.words) {
    for (const MakeRule make : kRules) rules_.push_back(make(context));
    for (std::size_t i = 0; i < language::kSectionKindCount; ++i) {
      kinds_[i] = RulesFor(language::kSectionKinds[i]);
    }
  }

  void Show(const ScriptSection& section) {
    const SectionKind* kind = language::FindKind(section.section->name);
    if (kind == nullptr) return;
    const KindRules& rules = kinds_[static_cast<std::size_t>(kind - language::kSectionKinds)];
    for (Rule* rule : rules.of_sections) rule->BeginSection(section, kind->source);
    for (std::uint32_t i = 0; i < section.section->item_count; ++i) {
      const reader::Item& item = section.section->items[i];
      const std::size_t row = language::FindKeyRow(*kind, item.key, i);
      Show({section.file, section.section, &item}, *kind, row, rules.of_items[row]);
    }
    for (Rule* rule : rules.of_sections) rule->EndSection();
  }

  void End(const Script& script) {
    for (const auto& rule : rules_) rule->EndScript(script);
  }

 private:
  KindRules RulesFor(const SectionKind& kind) const {
    KindRules found;
    for (const auto& rule : rules_) {
      if (rule->WantsSections(kind.source)) found.of_sections.push_back(rule.get());
    }
    for (std::size_t row = 0; row <= language::KeyRowCount(kind); ++row) {
      const std::uint32_t entry = language::EntryOfRow(kind, row);
      std::vector<Rule*>& of_row = found.of_items.emplace_back();
      for (const auto& rule : rules_) {
        if (rule->WantsItems(kind.source, entry)) of_row.push_back(rule.get());
      }
    }
    return found;
  }

  void Show(const ItemRef& place, const SectionKind& kind, std::size_t row,
            const std::vector<Rule*>& rules) {
    parts_.clear();
    reader::ForEachPart(*place.item, [&](std::string_view part) { parts_.push_back(part); });
    ScriptItem item{place, &kind, language::EntryOfRow(kind, row), parts_};
    SetRecord(item);
    for (Rule* rule : rules) rule->Check(item);
  }

  void SetRecord(ScriptItem& item) const {
    const std::uint32_t payload = language::PayloadOf(item.entry);
    if (payload == language::PAYLOAD_REPEATER) item.record = &kRepeaterRecord;
    if (payload != language::PAYLOAD_VALUE) return;
    const auto type = words_.Find(item.first());
    if (!type) return;
    item.type = *type;
    item.record = &language::FindValueType(*type);
    item.first_field = 1;
  }

  const DefinedWords& words_;
  std::vector<std::unique_ptr<Rule>> rules_;
  std::array<KindRules, language::kSectionKindCount> kinds_;
  std::vector<std::string_view> parts_;  // of the item that is shown
};

}  // namespace

std::vector<diagnostics::Diagnostic> CheckScript(const Script& script) {
  if (!IsComplete(script)) return {};
  RuleReport report;
  const DefinedWords words(script, report);
  Walk walk({words, report});
  for (const ScriptSection& section : script.sections()) walk.Show(section);
  walk.End(script);
  if (IncludesAgain(script)) report.DropRepeated();
  return report.Take();
}

}  // namespace rux::rules
