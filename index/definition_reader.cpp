#include "index/definition_reader.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>

#include "index/index.h"
#include "index/records.h"
#include "index/words.h"
#include "reader/script.h"
#include "reader/value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/keys.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"
#include "sources/source_set.h"

namespace rux::index {
namespace {

// Whether the texts of such entries are names that are looked for.
bool IsLookedFor(const Space& space) {
  const bool is_name = space.entry == language::ENTRY_NAME || space.entry == language::ENTRY_ID ||
                       space == kArguments;
  return is_name || language::HasRow(language::kReferences, [&](const language::Reference& row) {
           return row.target == space.section && row.key == space.entry;
         });
}

}  // namespace

DefinitionReader::DefinitionReader(const sources::SourceSet& sources, Index& index)
    : sources_(sources), index_(index) {}

void DefinitionReader::Read() {
  AddFiles();
  std::map<const ruxcomp::reader::Section*, Id> known;
  const bool has_repeated = sources_.has_repeated_includes();
  for (const sources::SourceSection& section : sources_.sections()) {
    if (has_repeated) {
      const auto id = static_cast<Id>(index_.sections_.size());
      const auto [place, is_new] = known.try_emplace(section.section, id);
      if (!is_new) {
        DefineAgain(place->second);
        continue;
      }
    }
    Add(section);
  }
  AddNumbers();
}

void DefinitionReader::AddFiles() {
  for (const sources::Opening& opening : sources_.openings()) {
    const auto file = static_cast<Id>(index_.files_.size());
    if (!index_.numbers_.try_emplace(opening.file, file).second) continue;
    index_.files_.push_back(opening.file);
    const Id symbol = SymbolOf(kFiles, opening.file->path());
    index_.definitions_.push_back({symbol, file, kNone, kNone, {}, 0});
  }
  index_.sections_of_files_.resize(index_.files_.size());
}

void DefinitionReader::Add(const sources::SourceSection& section) {
  if (file_ == kNone || index_.files_[file_] != section.file) {
    file_ = index_.NumberOf(section.file);
  }
  const language::SectionKind* kind = language::FindKind(section.section->name);
  index_.sections_of_files_[file_].push_back(static_cast<Id>(index_.sections_.size()));
  index_.sections_.push_back({file_, section.section, kind, static_cast<Id>(index_.items_.size())});
  if (kind != nullptr) AddItems(*section.section, *kind);
}

void DefinitionReader::AddItems(const ruxcomp::reader::Section& section,
                                const language::SectionKind& kind) {
  const auto id = static_cast<Id>(index_.sections_.size() - 1);
  seen_rows_ = 0;
  for (std::uint32_t i = 0; i < section.item_count; ++i) {
    const Item& item = section.items[i];
    const std::size_t row = language::FindKeyRow(kind, item.key, i);
    index_.items_.push_back({id, language::EntryOfRow(kind, row), &item,
                             static_cast<Id>(index_.definitions_.size()), 0});
    if (row < language::KeyRowCount(kind)) AddDefinitions(item, kind, row);
  }
}

void DefinitionReader::AddDefinitions(const Item& item, const language::SectionKind& kind,
                                      std::size_t row) {
  const auto id = static_cast<Id>(index_.items_.size() - 1);
  const auto entry = static_cast<language::EntryId>(language::EntryOfRow(kind, row));
  if (entry == language::ENTRY_DEFINED_WORD) return AddWord(item, id);
  if (language::TextUseOf(kind.source, entry) == language::TextUse::kWord) {
    return NoteWord(id, ruxcomp::reader::FirstPart(item));
  }
  const Space space{kind.source, entry};
  if (row >= kind.templates.size()) return space == kFiles ? void() : AddKey(item, space);
  const std::uint64_t bit = std::uint64_t{1} << row;
  if ((seen_rows_ & bit) == 0 && IsLookedFor(space)) AddTexts(item, space);
  seen_rows_ |= bit;
}

void DefinitionReader::AddTexts(const Item& item, const Space& space) {
  const bool is_list = language::PayloadOf(space.entry) == language::PAYLOAD_STRINGLIST;
  const auto last = static_cast<Id>(index_.items_.size() - 1);
  bool is_first = true;
  ruxcomp::reader::ForEachPart(item, [&](std::string_view part) {
    if (!is_first && !is_list) return;
    is_first = false;
    if (space == kArguments) {
      index_.symbols_.push_back({space, index_.items_[last].section, kNone, item.key});
      AddDefinition(static_cast<Id>(index_.symbols_.size() - 1), part);
    } else if (HasNumbers(space)) {
      pending_.push_back({AddDefinition(kNone, part), space, part});
    } else {
      AddDefinition(SymbolOf(space, part), part);
    }
  });
}

void DefinitionReader::AddKey(const Item& item, const Space& space) {
  AddDefinition(SymbolOf(space, item.key), item.key);
}

void DefinitionReader::AddWord(const Item& item, Id id) {
  if (!DefinesWord(item)) return;
  const std::string_view text = ruxcomp::reader::FirstPart(item);
  NoteWord(id, text);
  const Id definition = AddDefinition(SymbolOf(kWords, item.key), item.key);
  const std::uint32_t value = index_.words_.WordOrNumber(text).value_or(0);
  index_.definitions_[definition].value = value;
  index_.words_.Define(item.key, {value, definition});
}

// A section that is read again gives its words their values again.
void DefinitionReader::DefineAgain(Id section) {
  for (const ItemRecord& record : index_.ItemsOf(section)) {
    const Item& item = *record.item;
    if (record.entry != language::ENTRY_DEFINED_WORD || !DefinesWord(item)) continue;
    const std::string_view text = ruxcomp::reader::FirstPart(item);
    const std::uint32_t value = index_.words_.WordOrNumber(text).value_or(0);
    index_.definitions_[record.first_definition].value = value;
    index_.words_.Define(item.key, {value, record.first_definition});
  }
}

void DefinitionReader::NoteWord(Id item, std::string_view text) {
  const Index::WordTable::Word* word = index_.words_.FindWord(text);
  if (word != nullptr) read_words_.push_back({item, word->origin});
}

// Of the item that is read.
Id DefinitionReader::AddDefinition(Id symbol, std::string_view name) {
  const auto item = static_cast<Id>(index_.items_.size() - 1);
  index_.definitions_.push_back(
      {symbol, file_, index_.items_[item].section, item, index_.files_[file_]->RangeOf(name), 0});
  return static_cast<Id>(index_.definitions_.size() - 1);
}

Id DefinitionReader::SymbolOf(const Space& space, std::string_view name) {
  const Id section = IsLocal(space) ? index_.items_.back().section : kNone;
  const auto id = static_cast<Id>(index_.symbols_.size());
  if (!index_.by_text_.Add(Index::ScopeOf(space, section), name, id)) {
    return index_.by_text_.Find(Index::ScopeOf(space, section), name);
  }
  index_.symbols_.push_back({space, section, 0, name});
  return id;
}

void DefinitionReader::AddNumbers() {
  for (const Pending& pending : pending_) {
    const auto number = index_.words_.NumberOrWord(pending.text);
    if (!number) continue;
    const std::uint32_t scope = Index::ScopeOf(pending.space, kNone);
    Id symbol = index_.by_number_.Find(scope, *number);
    if (symbol == kNone) {
      symbol = static_cast<Id>(index_.symbols_.size());
      index_.by_number_.Add(scope, *number, symbol);
      index_.symbols_.push_back({pending.space, kNone, *number, pending.text});
    }
    index_.definitions_[pending.definition].symbol = symbol;
    index_.definitions_[pending.definition].value = *number;
  }
}

}  // namespace rux::index
