// The words that a script defines, and the warnings about their definitions.
#ifndef RULES_DEFINED_WORDS_H_
#define RULES_DEFINED_WORDS_H_

#include <cstdint>
#include <optional>
#include <string_view>

#include "index/words.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"

namespace rux::rules {

// Whether a text looks like the name of a global, an argument or a value: G_..., ARG..., VALUE_...
bool LooksLikeOperand(std::string_view text);

class DefinedWords {
 public:
  // Reads the DEFINE and IFDEF sections, in the order of the script.
  DefinedWords(const Script& script, RuleReport& report);

  // The number of a word once everything is read.
  std::optional<std::uint32_t> Find(std::string_view word) const { return words_.Find(word); }

  // Where that number comes from; null for what is no word.
  const Place* FindPlace(std::string_view word) const;

  // The number that a text stands for in entries, where words come first.
  std::optional<std::uint32_t> WordOrNumber(std::string_view text) const {
    return words_.WordOrNumber(text);
  }

  // Whether a text is a word and cannot be read as a number.
  bool IsOnlyWord(std::string_view text) const;

  // Whether there are words that look like operands.
  bool has_operand_names() const { return has_operand_names_; }

 private:
  using Words = index::Words<Place>;

  void Read(const ScriptSection& section, const language::SectionKind& kind);
  void Define(const ItemRef& item);
  std::uint32_t ValueOf(const ItemRef& item);
  void CheckNumberLike(const ItemRef& item, std::uint32_t value);
  void CheckRedefined(const ItemRef& item, std::uint32_t value, const Words::Word& known);
  void CheckCondition(const ItemRef& condition);

  const Place* FindDefinition(std::string_view word);

  const Script& script_;
  RuleReport& report_;
  Words words_;
  TextMap<Place> definitions_;  // the first one of each word, found when one is asked for
  bool has_operand_names_ = false;
};

}  // namespace rux::rules

#endif  // RULES_DEFINED_WORDS_H_
