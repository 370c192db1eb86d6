// The checks of sections: each by itself in the first pass, redefinitions in the second.
#include <algorithm>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "checker/model_index.h"
#include "findings/finding.h"
#include "findings/origin.h"
#include "frontend/defined_words.h"
#include "frontend/entry.h"
#include "frontend/interned_string.h"
#include "frontend/report.h"
#include "frontend/section.h"
#include "frontend/text.h"
#include "ruxcomp/compile.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"

namespace ruxcomp::core {

namespace {

// A rule compares a section with the others of its kind. It reports a section that breaks it and
// answers 0.
using Rule = std::uint32_t(const CRUXSection& section, SectionId kind, ModelIndex& index);

std::uint32_t NoRule(const CRUXSection&, SectionId, ModelIndex&) { return 1; }

// Every section of the kind reports, the first one included.
std::uint32_t AtMostOne(const CRUXSection& section, SectionId kind, ModelIndex&) {
  if (SectionsOf(kind).size() < 2) return 1;
  const CRUXSection& first = *SectionsOf(kind).front();
  findings::Subject subject{section.OwnOrigin()};
  if (&first != &section) subject.other = first.OwnOrigin();
  ReportAt<MessageId::kRedefinedSection>(section, subject, section.name, section.name);
  return 0;
}

using FirstDefinition = ModelIndex::FirstDefinition;

// The first definition, if it is in an earlier section than `section`; else null.
const FirstDefinition* EarlierDefinition(const FirstDefinition* first, const CRUXSection& section) {
  return first && first->section != &section ? first : nullptr;
}

// Whether there is `one`, and a walk over the sections reaches it no later than `other`.
bool IsNoLater(const FirstDefinition* one, const FirstDefinition& other) {
  return one && one->ordinal <= other.ordinal;
}

struct GivenEntry {
  const CRUXSection& section;
  const CRUXEntry& entry;
};

// Reports `what`, which is that part of the entry and of the earlier one.
template <MessageId Id>
void ReportRedefined(const GivenEntry& given, const FirstDefinition& earlier, std::string_view what,
                     std::uint32_t part) {
  ReportAt<Id>(
      given.entry,
      {given.section.OriginOf(given.entry, part), earlier.section->OriginOf(*earlier.entry, part)},
      given.section.name, what, earlier.entry->GetFile(0), earlier.entry->line);
}

template <MessageId Id>
void ReportRedefined(const CRUXSection& section, EntryId id, const FirstDefinition& earlier) {
  const CRUXEntry& entry = *FindEntry(&section, id);
  ReportRedefined<Id>({section, entry}, earlier, *entry.m_RuxEntryData.text(), 0);
}

// No entry has the name of one in an earlier section. Of the earliest such section, the first
// repeat is reported.
std::uint32_t EntryNamesAreNew(const CRUXSection& section, SectionId kind, ModelIndex& index) {
  const CRUXEntry* repeat = nullptr;
  const FirstDefinition* earliest = nullptr;
  for (const CRUXEntry* entry : section.entries) {
    if (!IsGiven(entry)) continue;
    const FirstDefinition* first = EarlierDefinition(index.ByEntry(kind, entry->name), section);
    if (!first || (earliest && first->ordinal >= earliest->ordinal)) continue;
    repeat = entry;
    earliest = first;
  }
  if (!repeat) return 1;
  ReportRedefined<MessageId::kRedefinedElsewhere>({section, *repeat}, *earliest, repeat->name,
                                                  findings::Origin::kKey);
  return 0;
}

// The earliest section with the ID of this one, as found by a walk over the sections that ends
// before this one and before `same_name`. The walk reads both IDs of each comparison, and raises
// what reading them raises.
const FirstDefinition* SameId(const CRUXSection& section, SectionId kind, ModelIndex& index,
                              const FirstDefinition* same_name) {
  const std::optional<Text> id = FindText(&section, ENTRY_ID);
  if (!id || !index.HasRepeatedOrRaisingId(kind)) return nullptr;
  const FirstDefinition* first = EarlierDefinition(index.FirstWithId(kind), section);
  if (!first || IsNoLater(same_name, *first)) return nullptr;
  std::uint32_t number = 0;
  if (!StringToLong(*id, number)) return nullptr;
  const FirstDefinition* same = index.ById(kind, number);  // this section or an earlier one
  const FirstDefinition* raising = index.FirstRaisingId(kind);
  if (raising && !IsNoLater(same, *raising) && !IsNoLater(same_name, *raising)) {
    StringToLong(*raising->entry->m_RuxEntryData.text(), number);
  }
  return EarlierDefinition(same, section);
}

// Neither the NAME nor the ID is that of an earlier section. Only the earliest such section is
// reported, by its NAME rather than its ID. IDs given by defined words are not compared.
std::uint32_t NameAndIdAreNew(const CRUXSection& section, SectionId kind, ModelIndex& index) {
  const std::optional<Text> name = FindText(&section, ENTRY_NAME);
  const FirstDefinition* same_name = nullptr;
  if (name && index.HasRepeatedName(kind))
    same_name = EarlierDefinition(index.ByName(kind, *name), section);
  const FirstDefinition* same_id = SameId(section, kind, index, same_name);
  if (same_name && (!same_id || IsNoLater(same_name, *same_id))) {
    ReportRedefined<MessageId::kRedefinedName>(section, ENTRY_NAME, *same_name);
    return 0;
  }
  if (!same_id) return 1;
  ReportRedefined<MessageId::kRedefinedId>(section, ENTRY_ID, *same_id);
  return 0;
}

// The parent must be a group on a line with a smaller number, whatever files the two are in.
bool ParentIsEarlier(std::string_view parent, const CRUXSection& section, ModelIndex& index) {
  return parent == kRootGroup || index.HasGroupAbove(parent, section.line);
}

std::uint32_t GroupRule(const CRUXSection& section, SectionId kind, ModelIndex& index) {
  const std::optional<Text> parent = FindText(&section, ENTRY_PARENT);
  if (parent && ParentIsEarlier(*parent, section, index)) {
    return NameAndIdAreNew(section, kind, index);
  }
  findings::Subject subject{section.OwnOrigin()};
  if (parent) {
    subject.origin = section.OriginOf(*FindEntry(&section, ENTRY_PARENT), 0);
    const FirstDefinition* named = index.ByName(kind, *parent);
    if (named) subject.other = named->section->OwnOrigin();
  }
  ReportAt<MessageId::kParentDefinedLater>(section, subject);
  return 0;
}

Rule& RuleFor(Uniqueness uniqueness) {
  switch (uniqueness) {
    case Uniqueness::kSingle:
      return AtMostOne;
    case Uniqueness::kKeys:
      return EntryNamesAreNew;
    case Uniqueness::kNameAndId:
      return NameAndIdAreNew;
    case Uniqueness::kNameAndIdAfterParent:
      return GroupRule;
    case Uniqueness::kOwnKeys:
    case Uniqueness::kNothing:
      break;
  }
  return NoRule;
}

// The entries that the script gave; those with the same name are side by side in the order of the
// section.
std::vector<const CRUXEntry*> ByName(const CRUXSection& section) {
  std::vector<const CRUXEntry*> entries;
  for (const CRUXEntry* entry : section.entries) {
    if (IsGiven(entry)) entries.push_back(entry);
  }
  std::stable_sort(entries.begin(), entries.end(), [](const auto* one, const auto* other) {
    return InternedString::IsBefore(one->name, other->name);
  });
  return entries;
}

// Whether entries may have a name in common: never misses one, and is seldom wrong about a section
// of a few dozen entries.
bool MayRepeatNames(const CRUXSection& section) {
  std::bitset<8192> seen;
  for (const CRUXEntry* entry : section.entries) {
    if (!IsGiven(entry)) continue;
    const std::size_t place = entry->name.Hash() % seen.size();
    if (seen[place]) return true;
    seen.set(place);
  }
  return false;
}

// Reports every entry whose name an earlier one in the section has, name by name in the order of
// their first occurrences.
std::uint32_t EntriesAreUnique(const CRUXSection& section) {
  if (!MayRepeatNames(section)) return 1;
  std::map<const CRUXEntry*, std::vector<const CRUXEntry*>> repeats;  // by the first
  const std::vector<const CRUXEntry*> entries = ByName(section);
  const CRUXEntry* first = nullptr;
  for (const CRUXEntry* entry : entries) {
    if (first && first->name == entry->name) {
      repeats[first].push_back(entry);
    } else {
      first = entry;
    }
  }
  if (repeats.empty()) return 1;
  for (const CRUXEntry* entry : section.entries) {
    const auto found = repeats.find(entry);
    if (found == repeats.end()) continue;
    for (const CRUXEntry* repeat : found->second) {
      ReportAt<MessageId::kRedefinedEntry>(*repeat,
                                           {section.OriginOf(*repeat, findings::Origin::kKey),
                                            section.OriginOf(*entry, findings::Origin::kKey)},
                                           section.name, repeat->name);
    }
  }
  return 0;
}

// First pass over a slot or entry.
std::uint32_t CheckEntry(const CRUXSection& section, std::size_t place) {
  if (CRUXEntry* entry = section.entries[place]) {
    findings::Examine(section.OriginOf(*entry));
    return entry->IsValid(section, kWholeModel);
  }
  const EntryTemplate& row = section.TemplateOf(place);
  if (!(row.notation & kRequired)) return 1;
  ReportMissing(CRUXObj(row.identifier, row.notation), section);
  return 0;
}

// Runs a check on every section of the model, whatever it answers for the others.
template <class Check>
std::uint32_t CheckAll(Check check) {
  std::uint32_t ok = 1;
  for (const std::vector<CRUXSection*>* head : CRUXSection::m_svpHSection) {
    for (CRUXSection* section : *head) ok &= check(*section);
  }
  return ok;
}

}  // namespace

std::uint32_t CRUXSection::IsValid() {
  const SectionKind* kind = FindSourceKind(identifier);
  if (!kind) {
    ReportAt<MessageId::kInvalidSectionType>(*this, {OwnOrigin()}, name);
    return 0;
  }
  if (name != kind->keyword) {
    ReportAt<MessageId::kInvalidSectionName>(*this, {OwnOrigin()}, name);
    return 0;
  }
  std::uint32_t ok = 1;
  for (std::size_t place = 0; place < entries.size(); ++place) ok &= CheckEntry(*this, place);
  return ok;
}

std::uint32_t CRUXSection::IsValidEx(ModelIndex& index) {
  const SectionKind* kind = FindSourceKind(identifier);
  const Uniqueness uniqueness = kind ? kind->uniqueness : Uniqueness::kOwnKeys;
  if (uniqueness == Uniqueness::kNothing) return 1;
  findings::Examine(OwnOrigin());
  std::uint32_t ok = RuleFor(uniqueness)(*this, static_cast<SectionId>(identifier), index);
  ok &= EntriesAreUnique(*this);
  const CheckContext context(*this, &index);
  for (CRUXEntry* entry : entries) {
    if (!entry) continue;
    findings::Examine(OriginOf(*entry));
    ok &= entry->IsValidEx(context, kWholeModel);
  }
  return ok;
}

}  // namespace ruxcomp::core

using namespace ruxcomp::core;

std::uint32_t gccCheck() {
  if (!CheckAll([](CRUXSection& section) { return section.IsValid(); })) return 0;
  ModelIndex index;
  return CheckAll([&index](CRUXSection& section) { return section.IsValidEx(index); });
}
