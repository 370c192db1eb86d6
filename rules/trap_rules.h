// The rules on traps, family by family.
//
// Each family has a file of its own. They see the items of the script in the order in which the
// library reads them, once. A script may have millions: what is done for each must be cheap.
#ifndef RULES_TRAP_RULES_H_
#define RULES_TRAP_RULES_H_

#include <memory>
#include <vector>

#include "rules/defined_words.h"
#include "rules/script_item.h"
#include "rules/trap_report.h"

namespace rux::rules {

class TrapRules {
 public:
  virtual ~TrapRules() = default;
  // Whether the items of the section are to be seen, and its end.
  virtual bool BeginSection(const sources::SourceSection& section, std::uint32_t kind) = 0;
  virtual void See(const ScriptItem&) {}
  virtual void EndSection() {}
  virtual void End(const sources::SourceSet&) {}
};

using MakeTrapRules = std::unique_ptr<TrapRules> (*)(const DefinedWordTable& words,
                                                     TrapReport& report);

std::unique_ptr<TrapRules> MakeNumberTraps(const DefinedWordTable& words, TrapReport& report);
std::unique_ptr<TrapRules> MakeTextTraps(const DefinedWordTable& words, TrapReport& report);
std::unique_ptr<TrapRules> MakeTableTraps(const DefinedWordTable& words, TrapReport& report);
std::unique_ptr<TrapRules> MakeGroupTraps(const DefinedWordTable& words, TrapReport& report);
std::unique_ptr<TrapRules> MakePelmgroupTraps(const DefinedWordTable& words, TrapReport& report);
std::unique_ptr<TrapRules> MakeValueTraps(const DefinedWordTable& words, TrapReport& report);
std::unique_ptr<TrapRules> MakeNameTraps(const DefinedWordTable& words, TrapReport& report);
std::unique_ptr<TrapRules> MakeLineTraps(const DefinedWordTable& words, TrapReport& report);
std::unique_ptr<TrapRules> MakeScriptTraps(const DefinedWordTable& words, TrapReport& report);

inline constexpr MakeTrapRules kTrapRules[] = {
    MakeNumberTraps,    MakeTextTraps,  MakeLineTraps, MakeTableTraps,  MakeGroupTraps,
    MakePelmgroupTraps, MakeValueTraps, MakeNameTraps, MakeScriptTraps,
};

}  // namespace rux::rules

#endif  // RULES_TRAP_RULES_H_
