#include "index/reference_reader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "index/definition_reader.h"
#include "index/index.h"
#include "index/part_use.h"
#include "index/records.h"
#include "index/words.h"
#include "reader/script.h"
#include "reader/value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/names.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"
#include "sources/source_set.h"

namespace rux::index {

using language::Role;

ReferenceReader::ReferenceReader(const sources::SourceSet& sources,
                                 const std::vector<ReadWord>& read_words, Index& index)
    : sources_(sources), read_words_(read_words), index_(index) {}

void ReferenceReader::Read() {
  FindIncludedFiles();
  taken_.assign(index_.symbols_.size(), kNone);
  for (Id id = 0; id < index_.definitions_.size(); ++id) {
    const Id symbol = index_.definitions_[id].symbol;
    if (symbol == kNone) continue;
    const Symbol& named = index_.symbols_[symbol];
    if (named.space == kWords) {
      taken_[symbol] = index_.words_.FindWord(named.name)->origin;
      has_operand_names_ |= language::FindNamed(Role::kOperand, named.name) != nullptr;
    } else if (taken_[symbol] == kNone) {
      taken_[symbol] = id;
    }
  }
  for (Id item = 0; item < index_.items_.size(); ++item) ReadItem(item);
}

void ReferenceReader::FindIncludedFiles() {
  for (const sources::Opening& opening : sources_.openings()) {
    const ruxcomp::reader::Item* item = sources_.IncluderOf(opening).item;
    if (item == nullptr) continue;
    included_.emplace(item, index_.NumberOf(opening.file));
  }
}

void ReferenceReader::ReadItem(Id id) {
  ItemRecord& record = index_.items_[id];
  record.first_reference = static_cast<Id>(index_.references_.size());
  read_word_ = kNone;
  if (next_read_word_ < read_words_.size() && read_words_[next_read_word_].item == id) {
    read_word_ = read_words_[next_read_word_++].definition;
  }
  if (record.entry == 0) return;
  item_ = id;
  parts_.clear();
  ruxcomp::reader::ForEachPart(*record.item,
                               [&](std::string_view part) { parts_.push_back(part); });
  record_ = index_.RecordOf(record.entry, parts_.data(), parts_.size());
  const language::SectionId section = index_.sections_[record.section].kind->source;
  for (part_ = 0; part_ < parts_.size(); ++part_) {
    const PartUse use = UseOfPart(section, record.entry, record_, part_);
    role_ = use.role;
    ReadPart(use, parts_[part_]);
  }
}

void ReferenceReader::ReadPart(const PartUse& use, std::string_view text) {
  switch (use.use) {
    case Use::kText:
      if (use.reference != nullptr) ReadReference(*use.reference, text);
      return;
    case Use::kNumber:
      return ReadNumber(use, text);
    case Use::kWord:
    case Use::kType:
      return ReadWordOrNumber(text, false);
    case Use::kPath:
      return ReadPath(text);
    case Use::kField:
      return ReadField(use.role, text);
    case Use::kDropped:
      return;
  }
}

void ReferenceReader::ReadNumber(const PartUse& use, std::string_view text) {
  if (use.reference == nullptr) return ReadWordOrNumber(text, true);
  const auto number = index_.words_.NumberOrWord(text);
  const bool is_word = index_.words_.FindWord(text) != nullptr;
  const bool is_list =
      language::PayloadOf(index_.items_[item_].entry) == language::PAYLOAD_STRINGLIST;
  // Of a text that is neither, the check says so, but not in a list: it looks for its elements.
  if (is_word || (!number && !is_list)) ReadWordOrNumber(text, true);
  if (number || is_list) ReadReference(*use.reference, text);
}

void ReferenceReader::ReadReference(const language::Reference& reference, std::string_view text) {
  const Space space{reference.target, reference.key};
  Reference& added = Add(space, text);
  const auto number = index_.words_.NumberOrWord(text);
  if (HasNumbers(space)) {
    if (number) Take(added, index_.Find(space, *number));
    if (reference.unless == language::RefersUnless::kZero && number == 0U) {
      added.resolution = Resolution::kExempt;
    }
    return;
  }
  Take(added, index_.Find(space, text));
  if (reference.unless == language::RefersUnless::kRoot && text == language::kRootGroup) {
    added.resolution = Resolution::kExempt;
  }
}

void ReferenceReader::ReadPath(std::string_view text) {
  const ruxcomp::reader::Item& item = *index_.items_[item_].item;
  if (item.key != language::KeywordOf(language::ENTRY_FILE) || text.empty()) return;
  Reference& added = Add(kFiles, text);
  const auto file = included_.find(&item);
  if (file != included_.end()) {
    Take(added, index_.definitions_[file->second].symbol);
  } else if (!sources_.files().complete) {
    added.resolution = Resolution::kExempt;
  }
}

void ReferenceReader::ReadField(Role role, std::string_view text) {
  if (role == Role::kOperator || role == Role::kNone) return;
  const language::NamedEntry* named = language::FindNamed(role, text);
  if (named == nullptr) return ReadWordOrNumber(text, true);
  ReadNamed(*named, text);
}

void ReferenceReader::ReadNamed(const language::NamedEntry& named, std::string_view text) {
  const Space space{named.section, named.entry};
  if (space == kArguments) {
    ReadArgument(text);
  } else {
    const Id section = IsLocal(space) ? index_.items_[item_].section : kNone;
    Take(Add(space, text), index_.Find(space, text, section));
  }
  if (!has_operand_names_ || named.prefix.empty()) return;
  const Id word = WordAt(text);
  if (word == kNone) return;
  Reference& hiding = Add(kWords, text);
  Take(hiding, index_.definitions_[word].symbol);
  hiding.hides = true;
}

void ReferenceReader::ReadArgument(std::string_view text) {
  const language::Number number =
      language::ReadNumber(text.substr(language::kArgumentPrefix.size()));
  const Id symbol = number.is_number ? SymbolOfArgument(text, number.value) : kNone;
  Reference& added = Add(kArguments, text);
  // A repeater passes arguments on unchecked.
  const bool is_unchecked = role_ == Role::kRepeatArgument;
  if (!is_unchecked && (!number.is_number || !IsArgument(number.value))) return;
  added.resolution = Resolution::kExempt;
  if (symbol == kNone) return;
  added.symbol = symbol;
  added.definition = taken_[symbol];
  if (added.definition != kNone) added.resolution = Resolution::kFound;
}

// Asked of one section after the other.
const ReferenceReader::Arguments& ReferenceReader::ArgumentsOf(Id section) {
  if (known_arguments_.section == section) return known_arguments_;
  const std::string_view text = index_.TextOf(section, language::ENTRY_ARGNUMBER);
  const language::Number count = language::ReadNumber(text);
  known_arguments_ = {section, index_.DefinitionIn(section, language::ENTRY_ARGNUMBER),
                      count.is_number ? count.value : 0, text.empty() || count.is_number};
  return known_arguments_;
}

bool ReferenceReader::IsArgument(std::uint32_t number) {
  const Id section = index_.items_[item_].section;
  if (index_.sections_[section].kind->source == language::SECTION_ACTION) {
    const Arguments& own = ArgumentsOf(section);
    return own.has_count && number <= own.count;
  }
  if (record_ == nullptr || !record_->Has(language::kForwardsArguments)) return number == 0;
  // The first parts are the type and the texts of the record.
  const auto passed = std::count_if(
      parts_.begin() + static_cast<std::ptrdiff_t>(1 + record_->TextCount()), parts_.end(),
      [](std::string_view part) { return language::HasPrefix(part, language::kArgumentPrefix); });
  return number <= static_cast<std::uint32_t>(passed);
}

Id ReferenceReader::SymbolOfArgument(std::string_view text, std::uint32_t number) {
  const Id section = index_.items_[item_].section;
  if (index_.sections_[section].kind->source != language::SECTION_ACTION) return kNone;
  const std::uint32_t scope = Index::ScopeOf(kArguments, section);
  const Id found = index_.by_number_.Find(scope, number);
  if (found != kNone) return found;
  const auto symbol = static_cast<Id>(index_.symbols_.size());
  index_.by_number_.Add(scope, number, symbol);
  index_.symbols_.push_back({kArguments, section, number, text});
  const Id definition = ArgumentsOf(section).definition;
  taken_.push_back(definition);
  if (definition != kNone) arguments_.emplace_back(symbol, definition);
  return symbol;
}

Id ReferenceReader::WordAt(std::string_view text) const {
  const ItemRecord& record = index_.items_[item_];
  const language::SectionId section = index_.sections_[record.section].kind->source;
  if (section == language::SECTION_DEFINE || section == language::SECTION_IFDEF) return read_word_;
  const Index::WordTable::Word* word = index_.words_.FindWord(text);
  return word == nullptr ? kNone : word->origin;
}

void ReferenceReader::ReadWordOrNumber(std::string_view text, bool may_be_number) {
  const Id word = WordAt(text);
  const bool is_field = role_ != Role::kNone;
  if (may_be_number && (word == kNone || is_field)) {
    // In a value, numbers come first. One without digits raises an error instead.
    const language::Number number = language::ReadNumber(text);
    if (number.is_number || number.raises) return;
  }
  Reference& added = Add(kWords, text);
  if (word == kNone) return;
  Take(added, index_.definitions_[word].symbol);
  added.definition = word;
}

Reference& ReferenceReader::Add(const Space& space, std::string_view text) {
  const Id file = index_.sections_[index_.items_[item_].section].file;
  index_.references_.push_back({kNone, kNone, file, item_, index_.files_[file]->RangeOf(text),
                                space, part_, role_, Resolution::kMissing, false});
  return index_.references_.back();
}

void ReferenceReader::Take(Reference& reference, Id symbol) {
  if (symbol == kNone) return;
  reference.symbol = symbol;
  reference.definition = taken_[symbol];
  if (reference.definition != kNone) reference.resolution = Resolution::kFound;
}

}  // namespace rux::index
