// Scripts that lack what every machine has.
#include <fmt/format.h>

#include <memory>
#include <set>

#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
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
    // A part of a script may well be checked alone.
    if (kinds_.count(language::SECTION_SENSOR) == 0) return;
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

}  // namespace

std::unique_ptr<Rule> MakeEmptyScriptRule(const RuleContext& context) {
  return std::make_unique<EmptyScriptRule>(context);
}

std::unique_ptr<Rule> MakeMissingSectionRule(const RuleContext& context) {
  return std::make_unique<MissingSectionRule>(context);
}

}  // namespace rux::rules
