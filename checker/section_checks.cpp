// The checks of sections: each by itself in the first pass, redefinitions in the second.
#include "checker/messages.h"
#include "checker/number.h"
#include "frontend/lookup.h"
#include "frontend/report.h"
#include "frontend/section.h"
#include "ruxcomp/compile.h"
#include "ruxcomp/data.h"

namespace {

// A rule looks at a section of a list that holds all sections of its kind in order of definition;
// it reports and answers 0 when the section breaks it.
using Sections = std::vector<CRUXSection*>;
using Rule = std::uint32_t(const CRUXSection& section, const Sections& all);

std::uint32_t NoRule(const CRUXSection&, const Sections&) { return 1; }

// Every section of the kind reports, the first one included.
std::uint32_t AtMostOne(const CRUXSection& section, const Sections& all) {
  if (all.size() < 2) return 1;
  ReportAt<msg::kSectionRedefined>(section, section.name, section.name);
  return 0;
}

// No entry name of an earlier section; the first repeat found ends the rule.
std::uint32_t EntryNamesAreNew(const CRUXSection& section, const Sections& all) {
  for (const CRUXSection* earlier : all) {
    if (earlier == &section) break;
    for (const auto& entry : section.entries) {
      const CRUXEntry* first =
          entry->m_RuxEntryData.HasData() ? FindFilled(*earlier, entry->name) : nullptr;
      if (!first) continue;
      ReportAt<msg::kEntryRedefinedElsewhere>(*entry, section.name, entry->name, first->GetFile(0),
                                              first->line);
      return 0;
    }
  }
  return 1;
}

// Whether both entries are there, and hold texts for which `same` holds.
template <class Same>
bool BothHold(const CRUXEntry* one, const CRUXEntry* other, Same same) {
  const std::string* oneText = one ? one->m_RuxEntryData.Get<std::string>() : nullptr;
  const std::string* otherText = other ? other->m_RuxEntryData.Get<std::string>() : nullptr;
  return oneText && otherText && same(*oneText, *otherText);
}

bool SameText(const std::string& one, const std::string& other) { return one == other; }

// IDs given by defined words are not compared.
bool SameNumber(const std::string& one, const std::string& other) {
  std::uint32_t a = 0;
  std::uint32_t b = 0;
  return StringToLong(one, a) && StringToLong(other, b) && a == b;
}

// No NAME and no ID of an earlier section; the first repeat found ends the rule.
std::uint32_t NameAndIdAreNew(const CRUXSection& section, const Sections& all) {
  const CRUXEntry* name = FindEntry(&section, ENTRY_NAME);
  const CRUXEntry* id = FindEntry(&section, ENTRY_ID);
  for (const CRUXSection* earlier : all) {
    if (earlier == &section) break;
    const CRUXEntry* earlierName = FindEntry(earlier, ENTRY_NAME);
    const CRUXEntry* earlierId = FindEntry(earlier, ENTRY_ID);
    if (BothHold(name, earlierName, SameText)) {
      ReportAt<msg::kNameRedefined>(*name, section.name, *name->m_RuxEntryData.Get<std::string>(),
                                    earlierName->GetFile(0), earlierName->line);
      return 0;
    }
    if (BothHold(id, earlierId, SameNumber)) {
      ReportAt<msg::kIdRedefined>(*id, section.name, *id->m_RuxEntryData.Get<std::string>(),
                                  earlierId->GetFile(0), earlierId->line);
      return 0;
    }
  }
  return 1;
}

// The parent must be a group that stands on a smaller line, whatever files the two stand in.
bool ParentIsEarlier(const CRUXSection& section, const Sections& all) {
  const std::string* parent = FindText(&section, ENTRY_PARENT);
  if (!parent || *parent == "0") return true;
  for (const CRUXSection* group : all) {
    const std::string* name = FindText(group, ENTRY_NAME);
    if (name && *name == *parent && group->line < section.line) return true;
  }
  return false;
}

std::uint32_t GroupRule(const CRUXSection& section, const Sections& all) {
  if (ParentIsEarlier(section, all)) return NameAndIdAreNew(section, all);
  ReportAt<msg::kParentNotEarlier>(section);
  return 0;
}

Rule& RuleFor(std::uint32_t kind) {
  switch (kind) {
    case SECTION_MORVRUX:
    case SECTION_SYSTEM:
      return AtMostOne;
    case SECTION_PROPERTY:
    case SECTION_GLOBAL:
    case SECTION_REPEATER:
      return EntryNamesAreNew;
    case SECTION_GROUP:
      return GroupRule;
    case SECTION_SENSOR:
    case SECTION_DEVICE:
    case SECTION_ACTION:
    case SECTION_TABLE:
    case SECTION_PELMGROUP:
      return NameAndIdAreNew;
    default:
      return NoRule;
  }
}

// An entry name that stands more than once in the section: every later occurrence reports once.
std::uint32_t EntriesAreUnique(const CRUXSection& section) {
  std::vector<const CRUXEntry*> left;
  for (const auto& entry : section.entries) {
    if (entry->m_RuxEntryData.HasData()) left.push_back(entry.get());
  }
  std::uint32_t ok = 1;
  for (std::size_t i = 0; i < left.size(); ++i) {
    if (!left[i]) continue;
    for (std::size_t j = i + 1; j < left.size(); ++j) {
      if (!left[j] || left[j]->name != left[i]->name) continue;
      ReportAt<msg::kEntryRedefined>(*left[j], section.name, left[j]->name);
      left[j] = nullptr;
      ok = 0;
    }
  }
  return ok;
}

// Runs a check over every section of the model; all of them run, whatever the others answer.
template <class Check>
std::uint32_t CheckAll(Check check) {
  std::uint32_t ok = 1;
  for (const Sections* head : CRUXSection::m_svpHSection) {
    for (CRUXSection* section : *head) ok &= check(*section);
  }
  return ok;
}

}  // namespace

std::uint32_t CRUXSection::IsValid(unsigned int) {
  const char* keyword = nullptr;
  for (std::uint32_t row = 0; row < g_dwNTMSect && !keyword; ++row) {
    if (g_NTMapSect[row].identifier == identifier) keyword = g_NTMapSect[row].keyword;
  }
  if (!keyword) {
    ReportAt<msg::kSectionTypeInvalid>(*this, name);
    return 0;
  }
  if (name != keyword) {
    ReportAt<msg::kSectionNameInvalid>(*this, name);
    return 0;
  }
  std::uint32_t ok = 1;
  for (const auto& entry : entries) ok &= entry->IsValid(*this, kWholeModel);
  return ok;
}

std::uint32_t CRUXSection::IsValidEx(unsigned int) {
  if (identifier == SECTION_INCLUDE) return 1;
  std::uint32_t ok = RuleFor(identifier)(*this, SectionsOf(identifier));
  ok &= EntriesAreUnique(*this);
  for (const auto& entry : entries) ok &= entry->IsValidEx(*this, kWholeModel);
  return ok;
}

std::uint32_t gccCheck() {
  if (!CheckAll([](CRUXSection& section) { return section.IsValid(kWholeModel); })) return 0;
  return CheckAll([](CRUXSection& section) { return section.IsValidEx(kWholeModel); });
}
