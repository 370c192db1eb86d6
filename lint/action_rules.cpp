#include "lint/action_rules.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "index/index.h"
#include "index/records.h"
#include "index/spot.h"
#include "lint/lint_rows.h"
#include "rules/rule.h"
#include "rules/script_item.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/values.h"

namespace rux::lint {
namespace {

namespace language = ruxcomp::language;
using index::Id;
using index::Index;
using index::kNone;

// VALUE_1, VALUE_2 and so on. `record`: null for a type that is not known.
struct Step {
  std::uint32_t number;
  Id item;
  const language::ValueType* record;
};

// The values of such types say which value is next.
constexpr std::uint32_t kFirstControl = 101;

bool IsJump(const Step& step) { return step.record->RoleOf(0) == language::Role::kLocalValue; }

class Action {
 public:
  Action(const Index& index, Id section, const rules::RuleContext& context)
      : index_(index), section_(section), context_(context) {
    for (const index::ItemRecord& item : index_.ItemsOf(section)) Read(item);
    std::stable_sort(steps_.begin(), steps_.end(),
                     [](const Step& a, const Step& b) { return a.number < b.number; });
  }

  void Check() const {
    // Of an unknown type, nobody knows what it does.
    if (has_opaque_values_) return;
    CheckArguments();
    CheckResults();
    CheckOrder();
  }

 private:
  void Read(const index::ItemRecord& item) {
    if (language::PayloadOf(item.entry) != language::PAYLOAD_VALUE) return;
    const auto id = static_cast<Id>(&item - index_.items().data());
    const std::vector<std::string_view> parts = index::PartsOf(index_, id);
    const language::ValueType* record = index_.RecordOf(item.entry, parts.data(), parts.size());
    has_values_ = true;
    if (record == nullptr || record->shape == language::Shape::kNone) {
      has_opaque_values_ = true;
    } else if (item.entry == language::ENTRY_VALUE_OF_ACTION) {
      steps_.push_back({NumberOf(item.item->key), id, record});
    }
  }

  // 0 for a key that the library refuses.
  static std::uint32_t NumberOf(std::string_view key) {
    if (!language::HasPrefix(key, language::kValuePrefix)) return 0;
    const std::string_view number = key.substr(language::kValuePrefix.size());
    return number.empty() ? 0 : language::ReadNumber(number).value;
  }

  // The first argument that is not used.
  void CheckArguments() const {
    const Id item = index_.FindItem(section_, language::ENTRY_ARGNUMBER);
    const std::string_view text = index_.TextOf(section_, language::ENTRY_ARGNUMBER);
    // An action without values is still to be written.
    if (item == kNone || text.empty() || !has_values_) return;
    const language::Number count = language::ReadNumber(text);
    if (!count.is_number) return;
    const std::uint32_t first = Uses(0) ? 0 : 1;
    std::uint32_t passed = 0;
    while (passed < count.value && Uses(first + passed)) ++passed;
    if (passed == count.value) return;
    context_.report.Add(
        RowOf(RuleId::kUnusedArgument), RefOf(item),
        [&] { return fmt::format("nothing uses {}{}", language::kArgumentPrefix, first + passed); },
        text);
  }

  // The index has an argument for each that a value names.
  bool Uses(std::uint32_t argument) const {
    return index_.Find(index::kArguments, argument, section_) != kNone;
  }

  void CheckResults() const {
    for (const Step& step : steps_) {
      if (step.record->shape != language::Shape::kCalculation || IsNamed(step)) continue;
      const rules::ItemRef item = RefOf(step.item);
      context_.report.Add(RowOf(RuleId::kUnusedStep), item,
                          [&] { return fmt::format("nothing uses {}", item.name()); });
    }
  }

  // The first step after each jump, unless something leads to it.
  void CheckOrder() const {
    for (std::size_t i = 0; i + 1 < steps_.size(); ++i) {
      const bool may_be_skipped = i > 0 && steps_[i - 1].record->code >= kFirstControl;
      if (!IsJump(steps_[i]) || may_be_skipped || IsNamed(steps_[i + 1])) continue;
      const rules::ItemRef jump = RefOf(steps_[i].item);
      context_.report
          .Add(RowOf(RuleId::kUnreachableStep), RefOf(steps_[i + 1].item),
               [&] { return fmt::format("nothing leads here: {} goes elsewhere", jump.name()); })
          .Note("here", jump, jump.name());
    }
  }

  bool IsNamed(const Step& step) const {
    const index::Span<index::Definition> definitions = index_.DefinitionsIn(step.item);
    return !definitions.empty() && !index_.ReferencesTo(definitions.front().symbol).empty();
  }

  rules::ItemRef RefOf(Id item) const {
    const index::SectionRecord& section = index_.sections()[section_];
    return {index_.files()[section.file], section.section, index_.items()[item].item};
  }

  const Index& index_;
  const Id section_;
  const rules::RuleContext& context_;
  std::vector<Step> steps_;  // by number
  bool has_values_ = false;
  bool has_opaque_values_ = false;
};

}  // namespace

void CheckActions(const Index& index, const rules::RuleContext& context) {
  for (Id section = 0; section < index.sections().size(); ++section) {
    const language::SectionKind* kind = index.sections()[section].kind;
    if (kind == nullptr || kind->source != language::SECTION_ACTION) continue;
    Action(index, section, context).Check();
  }
}

}  // namespace rux::lint
