// DEFINE, IFDEF and INCLUDE: the sections that act while the script is read.
#include "frontend/messages.h"
#include "frontend/parse.h"
#include "frontend/predefine.h"
#include "frontend/report.h"
#include "frontend/section_kinds.h"

namespace {

// Defines the word of an entry, when its value is acceptable.
void DefineWord(CRUXEntry& entry, const CRUXSection& section) {
  if (!entry.IsValid(section, kWhileReading)) return;
  AddPredDefineValue(entry.name, *entry.m_RuxEntryData.Get<std::uint32_t>());
}

}  // namespace

std::uint32_t CGSDEFINE::SetEntry(const std::string& file, const std::string& key,
                                  const std::string& value, std::uint32_t itemLine) {
  DefineWord(*AddFreeEntry(file, key, value, itemLine), *this);
  return 1;
}

std::uint32_t CGSIFDEF::SetEntry(const std::string& file, const std::string& key,
                                 const std::string& value, std::uint32_t itemLine) {
  if (ifdefSeen) {
    DefineWord(*AddFreeEntry(file, key, value, itemLine), *this);
  } else {
    ifdefResult = ChkIFDEF(file, key, value, itemLine);
    ifdefSeen = 1;
  }
  return 1;
}

std::uint32_t CGSIFDEF::ChkIFDEF(const std::string& file, const std::string& key,
                                 const std::string& value, std::uint32_t itemLine) {
  // The rule of all sections, not that of this kind, which has called.
  // NOLINTNEXTLINE(bugprone-parent-virtual-call)
  if (!CRUXSection::SetEntry(file, key, value, itemLine)) return 0;
  CRUXEntry& condition = *entries.front();
  if (!condition.IsValid(*this, kWhileReading)) return 0;
  std::uint32_t scratch = 0;
  return GetPreDefinedValue(*condition.m_RuxEntryData.Get<std::string>(), scratch);
}

std::uint32_t CGSINCLUDE::SetEntry(const std::string& file, const std::string& key,
                                   const std::string& value, std::uint32_t itemLine) {
  CRUXEntry& entry = *AddFreeEntry(file, key, value, itemLine);
  if (!entry.IsValid(*this, kWhileReading)) return 1;
  CRUXParse included;
  if (included.Start(GetFile(1) + *entry.m_RuxEntryData.Get<std::string>())) {
    included.Parse();
  } else {
    Report<msg::kIncludeFailed>(GetFile(0), itemLine, name, key, value);
  }
  return 1;
}
