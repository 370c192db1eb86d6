#include "rules/traps.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "rules/script_item.h"
#include "rules/trap_rules.h"

namespace rux::rules {
namespace {

// Shows the script to all rules.
class Walk {
 public:
  Walk(const DefinedWordTable& words, TrapReport& report) : words_(words) {
    for (const MakeTrapRules make : kTrapRules) rules_.push_back(make(words, report));
  }

  void Show(const sources::SourceSection& section) {
    const KindKeys* kind = FindKeysOf(section.section->name);
    if (kind == nullptr) return;
    interested_.clear();
    for (const auto& rule : rules_) {
      if (rule->BeginSection(section, kind->schema->kind)) interested_.push_back(rule.get());
    }
    for (std::uint32_t i = 0; i < section.section->item_count; ++i) Show(section, *kind, i);
    for (TrapRules* rule : interested_) rule->EndSection();
  }

  void End(const sources::SourceSet& sources) {
    for (const auto& rule : rules_) rule->End(sources);
  }

 private:
  void Show(const sources::SourceSection& section, const KindKeys& kind, std::uint32_t index) {
    const reader::Item& item = section.section->items[index];
    PartsInto(item, parts_);
    ScriptItem shown{
        section.file, section.section, &item, kind.schema->kind, KeyOf(kind, item.key, index),
        parts_};
    if (compiled::PayloadClassOf(shown.key) == compiled::PayloadClass::kValue) {
      if (const auto type = words_.Find(shown.first())) {
        shown.value_type = *type;
        shown.shape = &compiled::ShapeOf(*type);
      }
    }
    for (TrapRules* rule : interested_) rule->See(shown);
  }

  const DefinedWordTable& words_;
  std::vector<std::unique_ptr<TrapRules>> rules_;
  std::vector<TrapRules*> interested_;   // in the section that is shown
  std::vector<std::string_view> parts_;  // of the item that is shown
};

// What a file says that is included twice is said once.
void DropRepeated(std::vector<diagnostics::Diagnostic>& found) {
  using Key = std::tuple<const findings::MessageRow*, const support::TextFile*, std::uint32_t,
                         std::string_view>;
  std::set<Key> told;
  std::vector<diagnostics::Diagnostic> kept;
  // The keys look into what is kept, which must not move.
  kept.reserve(found.size());
  for (diagnostics::Diagnostic& trap : found) {
    const diagnostics::Location& at = trap.at;
    if (told.count({trap.row, at.file, at.range.begin, trap.text}) != 0) continue;
    const diagnostics::Diagnostic& first = kept.emplace_back(std::move(trap));
    told.insert({first.row, first.at.file, first.at.range.begin, first.text});
  }
  found = std::move(kept);
}

}  // namespace

std::vector<diagnostics::Diagnostic> FindTraps(const sources::SourceSet& sources) {
  // What a pipe has included, nobody knows.
  if (!sources.files().complete) return {};
  TrapReport report;
  const DefinedWordTable words(sources, report);
  Walk walk(words, report);
  for (const sources::SourceSection& section : sources.sections()) walk.Show(section);
  walk.End(sources);
  std::vector<diagnostics::Diagnostic> found = report.TakeFound();
  if (sources.includes_again()) DropRepeated(found);
  return found;
}

}  // namespace rux::rules
