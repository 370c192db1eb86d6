#include "index/index.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "index/definition_reader.h"
#include "index/records.h"
#include "index/reference_reader.h"
#include "reader/script.h"
#include "reader/value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/text_file.h"

namespace rux::index {
namespace {

// The records from that of `at` on up to that of the record after it, by one of their columns.
template <class Owner, class Element>
Span<Element> Owned(const std::vector<Owner>& owners, Id at, Id Owner::*first,
                    const std::vector<Element>& elements) {
  const std::size_t begin = owners[at].*first;
  const std::size_t end = at + 1 < owners.size() ? owners[at + 1].*first : elements.size();
  return {elements.data() + begin, end - begin};
}

}  // namespace

Index::Index(const sources::SourceSet& sources) {
  DefinitionReader definition_reader(sources, *this);
  definition_reader.Read();
  ReferenceReader reference_reader(sources, definition_reader.read_words(), *this);
  reference_reader.Read();
  Group(reference_reader.arguments());
}

void Index::Group(const std::vector<std::pair<Id, Id>>& arguments) {
  std::vector<std::pair<Id, Id>> pairs;
  pairs.reserve(definitions_.size() + arguments.size());
  for (Id id = 0; id < definitions_.size(); ++id) pairs.emplace_back(definitions_[id].symbol, id);
  pairs.insert(pairs.end(), arguments.begin(), arguments.end());
  definitions_of_ = Groups(symbols_.size(), pairs);
  pairs.clear();
  for (Id id = 0; id < references_.size(); ++id) pairs.emplace_back(references_[id].symbol, id);
  references_to_ = Groups(symbols_.size(), pairs);
}

Index::Groups::Groups(std::size_t symbols, const std::vector<std::pair<Id, Id>>& pairs)
    : first_(symbols + 2) {
  // Counted two places on, so that filling in moves each start to its place.
  for (const auto& [symbol, member] : pairs) {
    if (symbol != kNone) ++first_[symbol + 2];
  }
  for (std::size_t i = 2; i < first_.size(); ++i) first_[i] += first_[i - 1];
  members_.resize(first_.back());
  for (const auto& [symbol, member] : pairs) {
    if (symbol != kNone) members_[first_[symbol + 1]++] = member;
  }
}

Span<Id> Index::Groups::Of(Id symbol) const {
  return {members_.data() + first_[symbol], first_[symbol + 1] - first_[symbol]};
}

std::uint32_t Index::ScopeOf(const Space& space, Id section) {
  constexpr std::uint32_t kLocal = 0x80000000;
  constexpr std::uint32_t kEntryBits = 0x00FFFFFF;
  if (section != kNone) return kLocal | section;
  return (space.section & language::kKindMask) << 24 | (space.entry & kEntryBits);
}

Id Index::FindFile(const std::string& path) const {
  const auto found =
      std::find_if(files_.begin(), files_.end(),
                   [&](const sources::SourceFile* file) { return file->path() == path; });
  return found == files_.end() ? kNone : static_cast<Id>(found - files_.begin());
}

Span<ItemRecord> Index::ItemsOf(Id section) const {
  return Owned(sections_, section, &SectionRecord::first_item, items_);
}

Span<Definition> Index::DefinitionsIn(Id item) const {
  return Owned(items_, item, &ItemRecord::first_definition, definitions_);
}

Span<Reference> Index::ReferencesIn(Id item) const {
  return Owned(items_, item, &ItemRecord::first_reference, references_);
}

support::ByteRange Index::RangeOfItem(Id item) const {
  const sources::SourceFile& file = *files_[sections_[items_[item].section].file];
  const ruxcomp::reader::Item& found = *items_[item].item;
  const std::string_view last = found.value.empty() ? found.key : found.value;
  return {file.RangeOf(found.key).begin, file.RangeOf(last).end};
}

support::ByteRange Index::RangeOfSection(Id section) const {
  const SectionRecord& record = sections_[section];
  const support::ByteRange header = files_[record.file]->RangeOf(record.section->header);
  if (record.section->item_count == 0) return header;
  const ruxcomp::reader::Item& last = record.section->items[record.section->item_count - 1];
  const std::string_view text = last.value.empty() ? last.key : last.value;
  return {header.begin, files_[record.file]->RangeOf(text).end};
}

Span<Id> Index::DefinitionsOf(Id symbol) const { return definitions_of_.Of(symbol); }

Span<Id> Index::ReferencesTo(Id symbol) const { return references_to_.Of(symbol); }

Id Index::TakenDefinitionOf(Id symbol) const {
  const Symbol& named = symbols_[symbol];
  if (named.space == kWords) return words_.FindWord(named.name)->origin;
  const Span<Id> all = DefinitionsOf(symbol);
  return all.empty() ? kNone : all.front();
}

Id Index::Find(const Space& space, std::string_view name, Id section) const {
  const Id found = by_text_.Find(ScopeOf(space, section), name);
  return found != kNone && symbols_[found].space == space ? found : kNone;
}

Id Index::Find(const Space& space, std::uint32_t number, Id section) const {
  const Id found = by_number_.Find(ScopeOf(space, section), number);
  return found != kNone && symbols_[found].space == space ? found : kNone;
}

Id Index::FindItem(Id section, std::uint32_t entry) const {
  for (const ItemRecord& item : ItemsOf(section)) {
    if (item.entry == entry) return static_cast<Id>(&item - items_.data());
  }
  return kNone;
}

std::string_view Index::TextOf(Id section, std::uint32_t entry) const {
  const Id item = FindItem(section, entry);
  return item == kNone ? std::string_view() : ruxcomp::reader::FirstPart(*items_[item].item);
}

Id Index::DefinitionIn(Id section, std::uint32_t entry) const {
  const Id item = FindItem(section, entry);
  if (item == kNone || DefinitionsIn(item).empty()) return kNone;
  return static_cast<Id>(DefinitionsIn(item).begin() - definitions_.data());
}

const language::ValueType* Index::RecordOf(std::uint32_t entry, const std::string_view* parts,
                                           std::size_t count) const {
  const std::uint32_t payload = language::PayloadOf(entry);
  if (payload == language::PAYLOAD_REPEATER) return &language::kRepeaterRecord;
  if (payload != language::PAYLOAD_VALUE || count == 0) return nullptr;
  const auto code = words_.Find(parts[0]);
  if (!code) return nullptr;
  return &language::TypeFor(*code, count > 1 ? parts[1] : std::string_view());
}

}  // namespace rux::index
