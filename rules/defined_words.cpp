#include "rules/defined_words.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <optional>

#include "index/words.h"
#include "reader/script.h"
#include "reader/value.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/keys.h"
#include "ruxcomp/language/names.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"

namespace rux::rules {
namespace {

using language::SectionKind;

// The kind of a section that defines words; null for others.
const SectionKind* FindDefiningKind(const ruxcomp::reader::Section& section) {
  for (const auto id : {language::SECTION_DEFINE, language::SECTION_IFDEF}) {
    const SectionKind& kind = language::KindOf(id);
    if (section.name == kind.keyword) return &kind;
  }
  return nullptr;
}

// Calls use(item, entry) for the items of a section that defines words.
template <class Use>
void ForEachDefinition(const ScriptSection& section, const SectionKind& kind, Use use) {
  for (std::uint32_t i = 0; i < section.section->item_count; ++i) {
    const ruxcomp::reader::Item& item = section.section->items[i];
    const std::size_t row = language::FindKeyRow(kind, item.key, i);
    use(ItemRef{section.file, section.section, &item}, language::EntryOfRow(kind, row));
  }
}

}  // namespace

bool LooksLikeOperand(std::string_view text) {
  return language::FindNamed(language::Role::kOperand, text) != nullptr;
}

DefinedWords::DefinedWords(const Script& script, RuleReport& report)
    : script_(script), report_(report) {
  for (const ScriptSection& section : script.sections()) {
    const SectionKind* kind = FindDefiningKind(*section.section);
    if (kind != nullptr) Read(section, *kind);
  }
}

void DefinedWords::Read(const ScriptSection& section, const SectionKind& kind) {
  ForEachDefinition(section, kind, [&](const ItemRef& item, std::uint32_t entry) {
    if (entry == language::ENTRY_DEFINED_WORD) Define(item);
    if (entry == language::ENTRY_DEFINEWORD) CheckCondition(item);
  });
}

const Place* DefinedWords::FindPlace(std::string_view word) const {
  const Words::Word* found = words_.FindWord(word);
  return found == nullptr ? nullptr : &found->origin;
}

bool DefinedWords::IsOnlyWord(std::string_view text) const {
  return !text.empty() && !IsDigit(text.front()) && !language::ReadNumber(text).is_number &&
         Find(text);
}

void DefinedWords::Define(const ItemRef& item) {
  const std::string_view word = item.name();
  if (!index::DefinesWord(*item.item)) return;
  const std::uint32_t value = ValueOf(item);
  CheckNumberLike(item, value);
  has_operand_names_ |= LooksLikeOperand(word);
  const auto known = words_.Define(word, {value, item.place()});
  if (known) CheckRedefined(item, value, *known);
}

std::uint32_t DefinedWords::ValueOf(const ItemRef& item) {
  const std::string_view text = ruxcomp::reader::FirstPart(*item.item);
  if (const auto value = WordOrNumber(text)) return *value;
  Warning warning = report_.Add(
      RuleId::kDefineUnknownWord, item,
      [&] {
        return fmt::format("{} is neither a number nor a word that is defined above: {} becomes 0",
                           text, item.name());
      },
      text);
  if (const Place* place = FindDefinition(text)) warning.Note("defined only here", *place);
  SuggestPrefix(text, warning);
  return 0;
}

void DefinedWords::CheckNumberLike(const ItemRef& item, std::uint32_t value) {
  const language::Number number = language::ReadNumber(item.name());
  if (!number.is_number || number.value == value) return;
  report_.Add(RuleId::kNumberLikeWord, item, [&] {
    return fmt::format("operands take {} for the number {}, not for this word", item.name(),
                       number.value);
  });
}

void DefinedWords::CheckRedefined(const ItemRef& item, std::uint32_t value,
                                  const Words::Word& known) {
  const bool is_same_section = known.origin.file == item.file &&
                               known.origin.line >= item.section->line &&
                               known.origin.line <= item.item->line;
  // Within one section, the library refuses it.
  if (known.value == value || is_same_section) return;
  report_
      .Add(RuleId::kRedefinedWord, item,
           [&] {
             return fmt::format("{} was {} and becomes {}, even for the entries above", item.name(),
                                known.value, value);
           })
      .Note("first defined here", known.origin);
}

void DefinedWords::CheckCondition(const ItemRef& condition) {
  if (condition.section->item_count == 1) {
    report_.Add(RuleId::kEmptyIfdef, condition,
                "the section has no further items: it changes nothing, and what follows is "
                "compiled in any case");
    return;
  }
  const std::string_view word = ruxcomp::reader::FirstPart(*condition.item);
  if (word.empty() || Find(word)) return;
  Warning warning = report_.Add(
      RuleId::kFalseIfdef, condition,
      [&] { return fmt::format("{} is not defined: the words below are defined anyway", word); },
      word);
  if (const Place* place = FindDefinition(word)) warning.Note("defined only here", *place);
}

const Place* DefinedWords::FindDefinition(std::string_view word) {
  if (definitions_.empty()) {
    for (const ScriptSection& section : script_.sections()) {
      const SectionKind* kind = FindDefiningKind(*section.section);
      if (kind == nullptr) continue;
      ForEachDefinition(section, *kind, [&](const ItemRef& item, std::uint32_t entry) {
        if (entry == language::ENTRY_DEFINED_WORD) {
          definitions_.try_emplace(item.name(), item.place());
        }
      });
    }
  }
  const auto found = definitions_.find(word);
  return found == definitions_.end() ? nullptr : &found->second;
}

}  // namespace rux::rules
