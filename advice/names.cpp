#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "advice/message_advice.h"
#include "diagnostics/diagnostic.h"
#include "reader/script.h"
#include "reader/value.h"
#include "rules/cell_range.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/values.h"
#include "sources/source_set.h"

namespace rux::advice {
namespace {

namespace language = ruxcomp::language;
using diagnostics::Diagnostic;
using Names = std::vector<std::string>;
using sources::SourceSet;

// Calls use(item) for the items of all sections of a kind, from the first one on that counts.
template <class Use>
void ForEachItem(const SourceSet& sources, language::SectionId kind, std::uint32_t first, Use use) {
  for (const sources::SourceSection& section : sources.sections()) {
    if (section.section->name != language::KindOf(kind).keyword) continue;
    for (std::uint32_t i = first; i < section.section->item_count; ++i) {
      use(section.section->items[i]);
    }
  }
}

// The values that one entry has in the sections of a kind, without quotes.
Names Values(const SourceSet& sources, language::SectionId kind, language::EntryId entry) {
  const std::string_view key = language::KeywordOf(entry);
  Names names;
  ForEachItem(sources, kind, 0, [&](const ruxcomp::reader::Item& item) {
    if (item.key == key) names.emplace_back(ruxcomp::reader::FirstPart(item));
  });
  return names;
}

void AddKeys(const SourceSet& sources, language::SectionId kind, std::uint32_t first,
             Names& names) {
  ForEachItem(sources, kind, first,
              [&](const ruxcomp::reader::Item& item) { names.emplace_back(item.key); });
}

bool IsOperand(const Diagnostic& diagnostic) {
  return diagnostic.section == language::KindOf(language::SECTION_GLOBAL).keyword ||
         diagnostic.section == language::KindOf(language::SECTION_REPEATER).keyword ||
         (diagnostic.entry && language::BeginsWith(*diagnostic.entry, language::kPlainValue));
}

}  // namespace

Names SectionKeywords(const SourceSet&, const Diagnostic&) {
  Names names;
  for (const language::SectionKind& kind : language::kSectionKinds) {
    names.emplace_back(kind.keyword);
  }
  return names;
}

Names Operators(const SourceSet&, const Diagnostic&) {
  Names names;
  for (const language::Operator& row : language::kOperators) names.emplace_back(row.text);
  return names;
}

Names Keywords(const SourceSet&, const Diagnostic& diagnostic) {
  Names names;
  const language::SectionKind* kind = language::FindKind(*diagnostic.section);
  if (kind == nullptr) return names;
  for (const language::EntryTemplate& row : kind->templates) {
    names.emplace_back(language::KeywordOf(row.identifier));
  }
  // A key that may repeat is not a free name.
  for (const language::FreeEntryRule& rule : kind->free_entries) {
    if ((rule.notation & language::kFreeName) != 0) continue;
    names.emplace_back(language::KeywordOf(rule.identifier));
  }
  if (kind->source != language::SECTION_TABLE || !diagnostic.entry) return names;
  std::string cells = rules::MeantCells(*diagnostic.entry);
  if (!cells.empty()) names.push_back(std::move(cells));
  return names;
}

Names DefinedWords(const SourceSet& sources, const Diagnostic&) {
  Names names;
  AddKeys(sources, language::SECTION_DEFINE, 0, names);
  // The first one is the condition.
  AddKeys(sources, language::SECTION_IFDEF, 1, names);
  return names;
}

Names Globals(const SourceSet& sources, const Diagnostic&) {
  Names names;
  AddKeys(sources, language::SECTION_GLOBAL, 0, names);
  return names;
}

Names LocalValues(const SourceSet& sources, const Diagnostic& diagnostic) {
  Names names;
  const ruxcomp::reader::Section* section = sources.At(diagnostic.origin).section;
  if (section == nullptr || section->name != language::KindOf(language::SECTION_ACTION).keyword) {
    return names;
  }
  for (std::uint32_t i = 0; i < section->item_count; ++i) {
    const std::string_view key = section->items[i].key;
    if (language::BeginsWith(key, language::kValuePrefix) && key != diagnostic.entry) {
      names.emplace_back(key);
    }
  }
  return names;
}

Names WordsAndOperands(const SourceSet& sources, const Diagnostic& diagnostic) {
  Names names = DefinedWords(sources, diagnostic);
  if (!IsOperand(diagnostic)) return names;
  // An operand that is none of the others is taken for a word.
  for (const Names& others : {Globals(sources, diagnostic), LocalValues(sources, diagnostic)}) {
    names.insert(names.end(), others.begin(), others.end());
  }
  return names;
}

Names GroupNames(const SourceSet& sources, const Diagnostic&) {
  return Values(sources, language::SECTION_GROUP, language::ENTRY_NAME);
}
Names ActionNames(const SourceSet& sources, const Diagnostic&) {
  return Values(sources, language::SECTION_ACTION, language::ENTRY_NAME);
}
Names TableNames(const SourceSet& sources, const Diagnostic&) {
  return Values(sources, language::SECTION_TABLE, language::ENTRY_NAME);
}

}  // namespace rux::advice
