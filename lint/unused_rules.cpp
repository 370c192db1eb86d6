// Definitions and files that nothing uses.
#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "index/index.h"
#include "index/records.h"
#include "index/spot.h"
#include "lint/action_rules.h"
#include "lint/lint_list.h"
#include "lint/lint_rows.h"
#include "lint/lint_rule.h"
#include "rules/rule.h"
#include "rules/script_item.h"
#include "ruxcomp/language/sections.h"

namespace rux::lint {
namespace {

using index::Id;
using index::Index;
using index::kNone;

// Which rule is about what is defined.
struct DefiningRow {
  index::Space space;
  RuleId rule;
  const char* text;
};
constexpr DefiningRow kDefiningRows[] = {
    {index::kWords, RuleId::kUnusedWord, "nothing uses the word {}"},
    {{language::SECTION_ACTION, language::ENTRY_NAME},
     RuleId::kUnusedAction,
     "nothing calls the action {}"},
    {{language::SECTION_TABLE, language::ENTRY_NAME},
     RuleId::kUnusedTable,
     "nothing looks up the table {}"},
    {{language::SECTION_GLOBAL, language::ENTRY_G},
     RuleId::kUnusedGlobal,
     "nothing uses the global {}"},
    {{language::SECTION_GROUP, language::ENTRY_NAME},
     RuleId::kUnusedGroup,
     "no sensor and no group has the parent {}"},
};

// Of such sections, shared files of words are made.
bool IsInVocabulary(language::SectionId kind) {
  return kind == language::SECTION_DEFINE || kind == language::SECTION_IFDEF ||
         kind == language::SECTION_INCLUDE;
}

class UnusedDefinitions {
 public:
  UnusedDefinitions(const Index& index, const LintContext& context)
      : index_(index), context_(context), has_more_(index.files().size()) {
    for (const index::SectionRecord& section : index_.sections()) {
      if (section.kind == nullptr) continue;
      if (!IsInVocabulary(section.kind->source)) has_more_[section.file] = true;
      has_header_ |= section.file == 0 && section.kind->source == language::SECTION_MORVRUX;
    }
  }

  void Report() {
    if (!has_header_) return;
    for (const index::Definition& definition : index_.definitions()) {
      if (definition.symbol != kNone && !IsUsed(definition)) ReportDefinition(definition);
    }
    FindNeededFiles();
    for (const index::Reference& reference : index_.references()) ReportInclude(reference);
  }

 private:
  bool IsUsed(const index::Definition& definition) const {
    const index::Span<Id> references = index_.ReferencesTo(definition.symbol);
    // What only calls itself is not called.
    const bool is_section = index_.symbols()[definition.symbol].space.entry == language::ENTRY_NAME;
    return std::any_of(references.begin(), references.end(), [&](Id id) {
      return !is_section || SectionOf(index_.references()[id]) != definition.section;
    });
  }

  void ReportDefinition(const index::Definition& definition) {
    const index::Symbol& symbol = index_.symbols()[definition.symbol];
    for (const DefiningRow& row : kDefiningRows) {
      if (row.space != symbol.space || !has_more_[definition.file]) continue;
      if (!KnowsUses(definition.file)) return;
      const rules::ItemRef item = RefOf(definition.item);
      const bool is_key = row.space.entry != language::ENTRY_NAME;
      const std::string_view name =
          is_key ? item.name() : index::PartsOf(index_, definition.item).front();
      context_.report.Add(
          RowOf(row.rule), item, [&] { return fmt::format(fmt::runtime(row.text), name); }, name);
    }
  }

  // What has more than words, words that other files use, or an INCLUDE of such a file.
  void FindNeededFiles() {
    std::multimap<Id, Id> includers;
    std::vector<Id> found;
    for (Id file = 0; file < has_more_.size(); ++file) {
      if (has_more_[file]) found.push_back(file);
    }
    for (const index::Reference& reference : index_.references()) {
      if (reference.definition == kNone) continue;
      const Id file = index_.definitions()[reference.definition].file;
      if (reference.space == index::kFiles) {
        includers.emplace(file, reference.file);
      } else if (file != reference.file) {
        found.push_back(file);
      }
    }
    is_needed_.assign(has_more_.size(), false);
    while (!found.empty()) {
      const Id file = found.back();
      found.pop_back();
      if (is_needed_[file]) continue;
      is_needed_[file] = true;
      const auto [first, last] = includers.equal_range(file);
      std::for_each(first, last, [&](const auto& edge) { found.push_back(edge.second); });
    }
  }

  void ReportInclude(const index::Reference& reference) {
    if (reference.space != index::kFiles || reference.definition == kNone) return;
    const Id included = index_.definitions()[reference.definition].file;
    if (is_needed_[included] || !is_needed_[reference.file] || !KnowsUses(reference.file)) return;
    const std::string_view path = index::PartsOf(index_, reference.item)[reference.part];
    context_.report.Add(
        RowOf(RuleId::kUnusedInclude), RefOf(reference.item),
        [&] { return fmt::format("nothing uses the words of {}", path); }, path);
  }

  Id SectionOf(const index::Reference& reference) const {
    return index_.items()[reference.item].section;
  }

  rules::ItemRef RefOf(Id item) const {
    const index::ItemRecord& record = index_.items()[item];
    const index::SectionRecord& section = index_.sections()[record.section];
    return {index_.files()[section.file], section.section, record.item};
  }

  bool KnowsUses(Id file) {
    const auto [known, is_new] = knows_uses_.try_emplace(file, false);
    if (is_new) known->second = context_.knows_uses(*index_.files()[file]);
    return known->second;
  }

  const Index& index_;
  const LintContext& context_;
  std::vector<bool> has_more_;  // by files: than words
  std::vector<bool> is_needed_;
  bool has_header_ = false;
  std::map<Id, bool> knows_uses_;
};

class UnusedRule : public rules::Rule {
 public:
  explicit UnusedRule(const LintContext& context) : context_(context) {}

  void EndScript(const rules::Script& script) override {
    const Index index(script);
    UnusedDefinitions(index, context_).Report();
    CheckActions(index, context_);
  }

 private:
  const LintContext context_;
};

}  // namespace

std::unique_ptr<rules::Rule> MakeUnusedRule(const LintContext& context) {
  return std::make_unique<UnusedRule>(context);
}

}  // namespace rux::lint
