#include "rules/defined_words.h"

#include <fmt/format.h>

#include "rules/trap_rules.h"

namespace rux::rules {
namespace {

bool DefinesWords(std::string_view section) { return section == "DEFINE" || section == "IFDEF"; }

bool LooksLikeOperand(std::string_view word) {
  return HasPrefix(word, "G_") || HasPrefix(word, "ARG") || HasPrefix(word, "VALUE_");
}

}  // namespace

DefinedWordTable::DefinedWordTable(const sources::SourceSet& sources, TrapReport& report)
    : sources_(sources), report_(report) {
  std::vector<std::string_view> parts;
  for (const sources::SourceSection& section : sources.sections()) {
    if (!DefinesWords(section.section->name)) continue;
    const KindKeys& kind = *FindKeysOf(section.section->name);
    for (std::uint32_t i = 0; i < section.section->item_count; ++i) {
      const reader::Item& item = section.section->items[i];
      PartsInto(item, parts);
      const ScriptItem shown{section.file,      section.section,          &item,
                             kind.schema->kind, KeyOf(kind, item.key, i), parts};
      if (shown.key == compiled::kKeyDEFINED_WORD) Define(shown);
      if (shown.key == compiled::kKeyDEFINEWORD) Test(shown);
    }
  }
}

std::optional<std::uint32_t> DefinedWordTable::Find(std::string_view word) const {
  const auto found = words_.find(word);
  return found == words_.end() ? std::nullopt : std::make_optional(found->second.value);
}

std::optional<std::uint32_t> DefinedWordTable::WordOrNumber(std::string_view text) const {
  if (const auto word = Find(text)) return word;
  const NumberText number = ReadNumber(text);
  return number.is_number ? std::make_optional(number.value) : std::nullopt;
}

void DefinedWordTable::Define(const ScriptItem& item) {
  // The library refuses these.
  const std::string_view word = item.name();
  if (item.parts.empty() || (word.front() >= '0' && word.front() <= '9')) return;
  const std::uint32_t value = ValueOf(item);
  const NumberText number = ReadNumber(word);
  if (number.is_number && number.value != value) {
    report_.Add(
        kNumberLikeWord, item,
        fmt::format("operands take {} for the number {}, not for this word", word, number.value));
  }
  has_operand_names_ |= LooksLikeOperand(word);
  const auto [place, is_new] = words_.try_emplace(word, Word{value, PlaceOf(item)});
  if (is_new) return;
  Word& known = place->second;
  const bool is_same_section = known.place.file == item.file &&
                               known.place.line >= item.section->line &&
                               known.place.line <= item.item->line;
  // Within one section, the library refuses it.
  if (known.value != value && !is_same_section) {
    diagnostics::Diagnostic& warning =
        report_.Add(kRedefinedWord, item,
                    fmt::format("{} was {} and becomes {}, also for entries that stand above", word,
                                known.value, value));
    AddPlace(warning, "first defined here", known.place);
  }
  known = {value, PlaceOf(item)};
}

std::uint32_t DefinedWordTable::ValueOf(const ScriptItem& item) {
  const std::string_view text = item.first();
  if (const auto value = WordOrNumber(text)) return *value;
  diagnostics::Diagnostic& warning = report_.Add(
      kDefineUnknownWord, item,
      fmt::format("{} is neither a number nor a word that is defined above: {} becomes 0", text,
                  item.name()),
      text);
  if (const sources::SourcePlace* place = LaterPlace(text))
    AddPlace(warning, "defined only here", *place);
  return 0;
}

void DefinedWordTable::Test(const ScriptItem& condition) {
  const std::string_view word = condition.first();
  if (condition.section->item_count == 1) {
    report_.Add(kEmptyIfdef, condition,
                "the section has no further items: it changes nothing, and what follows is "
                "compiled in any case");
    return;
  }
  if (word.empty() || Find(word)) return;
  diagnostics::Diagnostic& warning = report_.Add(
      kFalseIfdef, condition,
      fmt::format("{} is not defined: the words below are defined all the same", word), word);
  if (const sources::SourcePlace* place = LaterPlace(word))
    AddPlace(warning, "defined only here", *place);
}

const sources::SourcePlace* DefinedWordTable::LaterPlace(std::string_view word) {
  if (places_.empty()) {
    for (const sources::SourceSection& section : sources_.sections()) {
      if (!DefinesWords(section.section->name)) continue;
      const std::uint32_t first = section.section->name == "IFDEF" ? 1 : 0;
      for (std::uint32_t i = first; i < section.section->item_count; ++i) {
        const reader::Item& item = section.section->items[i];
        places_.try_emplace(item.key, sources::SourcePlace{section.file, item.line});
      }
    }
  }
  const auto found = places_.find(word);
  return found == places_.end() ? nullptr : &found->second;
}

}  // namespace rux::rules
