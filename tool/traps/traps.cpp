#include "tool/traps/traps.h"

#include "tool/traps/script_item.h"
#include "tool/traps/trap_rules.h"

namespace rux {
namespace {

// Shows the script to all rules.
class Walk {
 public:
  Walk(const DefinedWordTable& words, TrapReport& report) : words_(words) {
    for (const MakeTrapRules make : kTrapRules) rules_.push_back(make(words, report));
  }

  void Show(const SourceSection& section) {
    const KindKeys* kind = FindKeysOf(section.section->name);
    if (kind == nullptr) return;
    interested_.clear();
    for (const auto& rule : rules_) {
      if (rule->BeginSection(section, kind->schema->kind)) interested_.push_back(rule.get());
    }
    for (std::uint32_t i = 0; i < section.section->item_count; ++i) Show(section, *kind, i);
    for (TrapRules* rule : interested_) rule->EndSection();
  }

  void End(const SourceView& sources) {
    for (const auto& rule : rules_) rule->End(sources);
  }

 private:
  void Show(const SourceSection& section, const KindKeys& kind, std::uint32_t index) {
    const reader::Item& item = section.section->items[index];
    SubStrings(item.value, parts_);
    ScriptItem shown{
        section.file, section.section, &item, kind.schema->kind, KeyOf(kind, item.key, index),
        parts_};
    if (PayloadClassOf(shown.key) == PayloadClass::kValue) {
      if (const auto type = words_.Find(shown.first())) {
        shown.value_type = *type;
        shown.shape = &ShapeOf(*type);
      }
    }
    for (TrapRules* rule : interested_) rule->See(shown);
  }

  const DefinedWordTable& words_;
  std::vector<std::unique_ptr<TrapRules>> rules_;
  std::vector<TrapRules*> interested_;   // in the section that is shown
  std::vector<std::string_view> parts_;  // of the item that is shown
};

}  // namespace

std::vector<Diagnostic> FindTraps(const SourceView& sources) {
  // What a pipe has included, nobody knows.
  if (!sources.files().complete) return {};
  TrapReport report;
  const DefinedWordTable words(sources, report);
  Walk walk(words, report);
  for (const SourceSection& section : sources.sections()) walk.Show(section);
  walk.End(sources);
  return report.TakeFound();
}

}  // namespace rux
