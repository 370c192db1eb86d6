// DEFINE, IFDEF and INCLUDE: the sections that act while the script is read.
#include <cstdint>
#include <string>
#include <string_view>

#include "findings/finding.h"
#include "findings/origin.h"
#include "frontend/defined_words.h"
#include "frontend/entry.h"
#include "frontend/parse.h"
#include "frontend/report.h"
#include "frontend/section_kinds.h"

namespace ruxcomp::core {

namespace {

std::uint32_t CheckAtOnce(CRUXEntry& entry, const CRUXSection& section) {
  findings::Examine(section.OriginOf(entry));
  return entry.IsValid(section, kWhileReading);
}

// Defines the word of an entry, when its value is acceptable.
void DefineWord(CRUXEntry& entry, const CRUXSection& section) {
  if (!CheckAtOnce(entry, section)) return;
  AddPredDefineValue(entry.name, *entry.m_RuxEntryData.number());
}

// Functions of their own, so that their locals leave the stack before the included file is read,
// which may include others in turn.

[[gnu::noinline]] std::uint32_t StartIncluded(CRUXParse& included, const CRUXEntry& entry,
                                              const CRUXSection& section) {
  return included.Start(section.GetFile(1).append(*entry.m_RuxEntryData.text()));
}

[[gnu::noinline]] void ReportMissingInclude(const CRUXEntry& entry, const CRUXSection& section,
                                            std::string_view value) {
  const std::string base = section.GetFile(0);
  Report<MessageId::kMissingInclude>(
      {section.OriginOf(entry, 0), {}, findings::Place{base, entry.line}}, base, entry.line,
      section.name, entry.name, value);
}

}  // namespace

std::uint32_t CGSDEFINE::SetEntry(std::string_view file, std::string_view key,
                                  std::string_view value, std::uint32_t item_line) {
  DefineWord(*AddFreeEntry(file, key, value, item_line), *this);
  return 1;
}

std::uint32_t CGSIFDEF::SetEntry(std::string_view file, std::string_view key,
                                 std::string_view value, std::uint32_t item_line) {
  if (ifdefSeen) {
    DefineWord(*AddFreeEntry(file, key, value, item_line), *this);
  } else {
    ifdefResult = ChkIFDEF(file, key, value, item_line);
    ifdefSeen = 1;
  }
  return 1;
}

std::uint32_t CGSIFDEF::ChkIFDEF(std::string_view file, std::string_view key,
                                 std::string_view value, std::uint32_t item_line) {
  // The rule of all sections, not that of this kind, which is the caller.
  // NOLINTNEXTLINE(bugprone-parent-virtual-call)
  if (!CRUXSection::SetEntry(file, key, value, item_line)) return 0;
  CRUXEntry& condition = *entries.front();
  if (!CheckAtOnce(condition, *this)) return 0;
  std::uint32_t scratch = 0;
  return GetPreDefinedValue(*condition.m_RuxEntryData.text(), scratch);
}

std::uint32_t CGSINCLUDE::SetEntry(std::string_view file, std::string_view key,
                                   std::string_view value, std::uint32_t item_line) {
  CRUXEntry& entry = *AddFreeEntry(file, key, value, item_line);
  if (!CheckAtOnce(entry, *this)) return 1;
  CRUXParse included;
  if (StartIncluded(included, entry, *this)) {
    included.Parse();
  } else {
    ReportMissingInclude(entry, *this, value);
  }
  return 1;
}

}  // namespace ruxcomp::core
