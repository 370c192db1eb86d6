// Scripts that lack what every machine has.
#include <fmt/format.h>

#include "rules/trap_rules.h"

namespace rux::rules {
namespace {

class ScriptTraps : public TrapRules {
 public:
  explicit ScriptTraps(TrapReport& report) : report_(report) {}

  bool BeginSection(const sources::SourceSection&, std::uint32_t kind) override {
    kinds_ |= 1U << (kind & language::kKindMask);
    return false;
  }

  void End(const sources::SourceView& sources) override {
    if (sources.sections().empty()) {
      report_.Add(diagnostics::MessageId::kEmptyScript,
                  "the script has no sections: nothing is compiled");
    }
    // A part of a script may well be looked at alone.
    if (!Has(language::SECTION_SENSOR)) return;
    for (const language::SectionId kind : {language::SECTION_MORVRUX, language::SECTION_SYSTEM}) {
      if (Has(kind)) continue;
      report_.Add(diagnostics::MessageId::kMissingSection,
                  fmt::format("the script has sensors, but no {} section",
                              language::FindSourceKind(kind)->keyword));
    }
  }

 private:
  bool Has(std::uint32_t kind) const { return (kinds_ >> (kind & language::kKindMask) & 1) != 0; }

  TrapReport& report_;
  std::uint32_t kinds_ = 0;  // a bit for each that was seen
};

}  // namespace

std::unique_ptr<TrapRules> MakeScriptTraps(const DefinedWordTable&, TrapReport& report) {
  return std::make_unique<ScriptTraps>(report);
}

}  // namespace rux::rules
