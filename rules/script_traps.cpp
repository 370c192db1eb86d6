// Scripts that lack what every machine has.
#include <fmt/format.h>

#include "rules/trap_rules.h"

namespace rux::rules {
namespace {

class ScriptTraps : public TrapRules {
 public:
  explicit ScriptTraps(TrapReport& report) : report_(report) {}

  bool BeginSection(const sources::SourceSection&, std::uint32_t kind) override {
    kinds_ |= 1U << kind;
    return false;
  }

  void End(const sources::SourceSet& sources) override {
    if (sources.sections().empty()) {
      report_.Add(kEmptyScript, "the script has no sections: nothing is compiled");
    }
    // A part of a script may well be looked at alone.
    if (!Has(compiled::kKindSENSOR)) return;
    for (const std::uint32_t kind : {compiled::kKindMORVRUX, compiled::kKindSYSTEM}) {
      if (Has(kind)) continue;
      report_.Add(kMissingSection, fmt::format("the script has sensors, but no {} section",
                                               compiled::FindSchema(kind)->keyword));
    }
  }

 private:
  bool Has(std::uint32_t kind) const { return (kinds_ >> kind & 1) != 0; }

  TrapReport& report_;
  std::uint32_t kinds_ = 0;  // a bit for each that was seen
};

}  // namespace

std::unique_ptr<TrapRules> MakeScriptTraps(const DefinedWordTable&, TrapReport& report) {
  return std::make_unique<ScriptTraps>(report);
}

}  // namespace rux::rules
