// Scripts that lack what every machine has.
#include <fmt/format.h>

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string_view>

#include "reader/script.h"
#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"

namespace rux::rules {
namespace {

class EmptyScriptRule : public Rule {
 public:
  explicit EmptyScriptRule(const RuleContext& context) : report_(context.report) {}

  void EndScript(const Script& script) override {
    if (!script.sections().empty()) return;
    report_.Add(RuleId::kEmptyScript, "the script has no sections: nothing is compiled");
  }

 private:
  RuleReport& report_;
};

class MissingSectionRule : public Rule {
 public:
  explicit MissingSectionRule(const RuleContext& context) : report_(context.report) {}

  bool WantsSections(language::SectionId kind) const override {
    return kind == language::SECTION_SENSOR || kind == language::SECTION_MORVRUX ||
           kind == language::SECTION_SYSTEM;
  }
  void BeginSection(const ScriptSection&, language::SectionId kind) override {
    kinds_.insert(kind);
  }

  void EndScript(const Script&) override {
    // A script with neither is a part of a machine, which may well be checked alone.
    const bool has_one =
        kinds_.count(language::SECTION_MORVRUX) != 0 || kinds_.count(language::SECTION_SYSTEM) != 0;
    if (!has_one || kinds_.count(language::SECTION_SENSOR) == 0) return;
    for (const auto kind : {language::SECTION_MORVRUX, language::SECTION_SYSTEM}) {
      if (kinds_.count(kind) != 0) continue;
      report_.Add(RuleId::kMissingSection, [&] {
        return fmt::format("the script has sensors, but no {} section",
                           language::KindOf(kind).keyword);
      });
    }
  }

 private:
  RuleReport& report_;
  std::set<language::SectionId> kinds_;  // that the script has
};

// Places of keywords among all entries.
using Keywords = std::bitset<language::kEntryCount>;

// What a section of the kind must have.
Keywords RequiredBy(const language::SectionKind& kind) {
  Keywords required;
  for (const language::EntryTemplate& row : kind.templates) {
    if ((row.notation & language::kRequired) == 0) continue;
    required.set(language::FirstOfKeyword(language::KeywordOf(row.identifier)));
  }
  return required;
}

// Whether no section has all of these keys by chance. No other kind has the condition of an IFDEF.
bool IsTelling(const language::SectionKind& kind, const Keywords& required) {
  constexpr std::size_t kFewest = 3;
  return required.count() >= kFewest || kind.source == language::SECTION_IFDEF;
}

// The kind that asks for most of these keys, and for no others, but not `own`; null when none does.
const language::SectionKind* KindWith(const Keywords& keys, language::SectionId own) {
  const language::SectionKind* found = nullptr;
  std::size_t most = 0;
  for (const language::SectionKind& kind : language::kSectionKinds) {
    const Keywords required = RequiredBy(kind);
    const bool fits = kind.source != own && IsTelling(kind, required) && (required & ~keys).none();
    if (!fits || required.count() <= most) continue;
    found = &kind;
    most = required.count();
  }
  return found;
}

// In sections that take any key, those of another one are not out of place.
class SwallowedSectionRule : public Rule {
 public:
  explicit SwallowedSectionRule(const RuleContext& context) : report_(context.report) {}

  bool WantsSections(language::SectionId kind) const override { return kOfPlainNames(kind, {}); }

  void BeginSection(const ScriptSection& section, language::SectionId kind) override {
    Keywords keys;
    const ruxcomp::reader::Item* items = section.section->items;
    for (std::uint32_t i = 0; i < section.section->item_count; ++i) {
      const std::size_t place = language::FirstOfKeyword(items[i].key);
      if (place < keys.size()) keys.set(place);
    }
    const language::SectionKind* swallowed = keys.any() ? KindWith(keys, kind) : nullptr;
    if (swallowed == nullptr) return;
    const Keywords required = RequiredBy(*swallowed);
    std::uint32_t at = 0;
    while (!IsOf(required, items[at].key)) ++at;
    report_.Add(RuleId::kSwallowedSection, ItemRef{section.file, section.section, &items[at]}, [&] {
      return fmt::format(
          "the header [{}] is probably missing here: [{}] takes its entries as its own",
          swallowed->keyword, section.section->name);
    });
  }

 private:
  static bool IsOf(const Keywords& keywords, std::string_view key) {
    const std::size_t place = language::FirstOfKeyword(key);
    return place < keywords.size() && keywords.test(place);
  }

  RuleReport& report_;
};

}  // namespace

std::unique_ptr<Rule> MakeSwallowedSectionRule(const RuleContext& context) {
  return std::make_unique<SwallowedSectionRule>(context);
}

std::unique_ptr<Rule> MakeEmptyScriptRule(const RuleContext& context) {
  return std::make_unique<EmptyScriptRule>(context);
}

std::unique_ptr<Rule> MakeMissingSectionRule(const RuleContext& context) {
  return std::make_unique<MissingSectionRule>(context);
}

}  // namespace rux::rules
