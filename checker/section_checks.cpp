// The checks of sections: each by itself in the first pass, redefinitions in the second.
#include <algorithm>
#include <unordered_map>

#include "checker/messages.h"
#include "checker/model_index.h"
#include "checker/number.h"
#include "frontend/lookup.h"
#include "frontend/report.h"
#include "frontend/section.h"
#include "ruxcomp/compile.h"

namespace {

// A rule looks at a section among those of its kind; it reports and answers 0 when the section
// breaks it.
using Rule = std::uint32_t(const CRUXSection& section, SectionId kind);

std::uint32_t NoRule(const CRUXSection&, SectionId) { return 1; }

// Every section of the kind reports, the first one included.
std::uint32_t AtMostOne(const CRUXSection& section, SectionId kind) {
  if (SectionsOf(kind).size() < 2) return 1;
  ReportAt<msg::kSectionRedefined>(section, section.name, section.name);
  return 0;
}

using First = ModelIndex::First;

// What stands first, if it does so in an earlier section than `section`; else null.
const First* Earlier(const First* first, const CRUXSection& section) {
  return first && first->section != &section ? first : nullptr;
}

// No entry name of an earlier section. The first repeat of the earliest such section ends the rule.
std::uint32_t EntryNamesAreNew(const CRUXSection& section, SectionId kind) {
  const CRUXEntry* repeat = nullptr;
  const First* earliest = nullptr;
  for (const auto& entry : section.entries) {
    if (!entry->m_RuxEntryData.HasData()) continue;
    const First* first = Earlier(ModelIndex::Current().ByEntry(kind, entry->name.text()), section);
    if (!first || (earliest && first->ordinal >= earliest->ordinal)) continue;
    repeat = entry.get();
    earliest = first;
  }
  if (!repeat) return 1;
  ReportAt<msg::kEntryRedefinedElsewhere>(*repeat, section.name, repeat->name,
                                          earliest->entry->GetFile(0), earliest->entry->line);
  return 0;
}

template <const auto& Message>
void ReportRedefined(const CRUXSection& section, const CRUXEntry& entry, const First& earlier) {
  ReportAt<Message>(entry, section.name, *entry.m_RuxEntryData.Get<std::string>(),
                    earlier.entry->GetFile(0), earlier.entry->line);
}

// No NAME and no ID of an earlier section. The earliest such section ends the rule, its NAME before
// its ID. IDs given by defined words are not compared.
std::uint32_t NameAndIdAreNew(const CRUXSection& section, SectionId kind) {
  ModelIndex& index = ModelIndex::Current();
  const std::string* name = FindText(&section, ENTRY_NAME);
  const std::string* id = FindText(&section, ENTRY_ID);
  std::uint32_t number = 0;
  const First* sameName = nullptr;
  if (name && index.HasRepeatedName(kind)) sameName = Earlier(index.ByName(kind, *name), section);
  const First* sameId = nullptr;
  if (id && StringToLong(*id, number) && index.HasRepeatedId(kind)) {
    sameId = Earlier(index.ById(kind, number), section);
  }
  if (sameName && (!sameId || sameName->ordinal <= sameId->ordinal)) {
    ReportRedefined<msg::kNameRedefined>(section, *FindEntry(&section, ENTRY_NAME), *sameName);
    return 0;
  }
  if (!sameId) return 1;
  ReportRedefined<msg::kIdRedefined>(section, *FindEntry(&section, ENTRY_ID), *sameId);
  return 0;
}

// The parent must be a group that stands on a smaller line, whatever files the two stand in.
bool ParentIsEarlier(const CRUXSection& section) {
  const std::string* parent = FindText(&section, ENTRY_PARENT);
  return !parent || *parent == kRootGroup ||
         ModelIndex::Current().HasGroupAbove(*parent, section.line);
}

std::uint32_t GroupRule(const CRUXSection& section, SectionId kind) {
  if (ParentIsEarlier(section)) return NameAndIdAreNew(section, kind);
  ReportAt<msg::kParentNotEarlier>(section);
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

// The entries that the script gave, those of one name side by side in the order of the section.
std::vector<const CRUXEntry*> ByName(const CRUXSection& section) {
  std::vector<const CRUXEntry*> entries;
  for (const auto& entry : section.entries) {
    if (entry->m_RuxEntryData.HasData()) entries.push_back(entry.get());
  }
  std::stable_sort(entries.begin(), entries.end(), [](const auto* one, const auto* other) {
    return Name::IsBefore(one->name, other->name);
  });
  return entries;
}

// An entry name that stands more than once in the section: every later occurrence reports once,
// name by name in the order of their first occurrences.
std::uint32_t EntriesAreUnique(const CRUXSection& section) {
  std::unordered_map<const CRUXEntry*, std::vector<const CRUXEntry*>> repeats;  // by the first
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
  for (const auto& entry : section.entries) {
    const auto found = repeats.find(entry.get());
    if (found == repeats.end()) continue;
    for (const CRUXEntry* repeat : found->second) {
      ReportAt<msg::kEntryRedefined>(*repeat, section.name, repeat->name);
    }
  }
  return 0;
}

// Runs a check over every section of the model; all of them run, whatever the others answer.
template <class Check>
std::uint32_t CheckAll(Check check) {
  std::uint32_t ok = 1;
  for (const std::vector<CRUXSection*>* head : CRUXSection::m_svpHSection) {
    for (CRUXSection* section : *head) ok &= check(*section);
  }
  return ok;
}

}  // namespace

std::uint32_t CRUXSection::IsValid(unsigned int) {
  const SectionKind* kind = FindSourceKind(identifier);
  if (!kind) {
    ReportAt<msg::kSectionTypeInvalid>(*this, name);
    return 0;
  }
  if (name != kind->keyword) {
    ReportAt<msg::kSectionNameInvalid>(*this, name);
    return 0;
  }
  std::uint32_t ok = 1;
  for (const auto& entry : entries) ok &= entry->IsValid(*this, kWholeModel);
  return ok;
}

std::uint32_t CRUXSection::IsValidEx(unsigned int) {
  const SectionKind* kind = FindSourceKind(identifier);
  const Uniqueness uniqueness = kind ? kind->uniqueness : Uniqueness::kOwnKeys;
  if (uniqueness == Uniqueness::kNothing) return 1;
  std::uint32_t ok = RuleFor(uniqueness)(*this, static_cast<SectionId>(identifier));
  ok &= EntriesAreUnique(*this);
  for (const auto& entry : entries) ok &= entry->IsValidEx(*this, kWholeModel);
  return ok;
}

std::uint32_t gccCheck() {
  if (!CheckAll([](CRUXSection& section) { return section.IsValid(kWholeModel); })) return 0;
  // Of a model that passed, all texts were turned into payloads.
  CRUXEntry::m_itemTexts.Clear();
  ModelIndex index;
  return CheckAll([](CRUXSection& section) { return section.IsValidEx(kWholeModel); });
}
