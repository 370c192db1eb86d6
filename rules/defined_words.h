// The words that a script defines, and the traps of defining them.
#ifndef RULES_DEFINED_WORDS_H_
#define RULES_DEFINED_WORDS_H_

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "rules/number_text.h"
#include "rules/trap_report.h"

namespace rux::rules {

class DefinedWordTable {
 public:
  // Reads the DEFINE and IFDEF sections, in the order of the script.
  DefinedWordTable(const sources::SourceSet& sources, TrapReport& report);

  // The number of a word once everything is read.
  std::optional<std::uint32_t> Find(std::string_view word) const;

  // The number that a text stands for in entries, where words come first.
  std::optional<std::uint32_t> WordOrNumber(std::string_view text) const;

  // Whether there are words that operands could be taken for: G_..., ARG..., VALUE_...
  bool has_operand_names() const { return has_operand_names_; }

 private:
  struct Word {
    std::uint32_t value;
    sources::SourcePlace place;
  };

  void Define(const ScriptItem& item);
  void Test(const ScriptItem& condition);
  std::uint32_t ValueOf(const ScriptItem& item);
  const sources::SourcePlace* LaterPlace(std::string_view word);

  const sources::SourceSet& sources_;
  TrapReport& report_;
  std::unordered_map<std::string_view, Word> words_;
  std::unordered_map<std::string_view, sources::SourcePlace>
      places_;  // of the first definition, all of them
  bool has_operand_names_ = false;
};

}  // namespace rux::rules

#endif  // RULES_DEFINED_WORDS_H_
