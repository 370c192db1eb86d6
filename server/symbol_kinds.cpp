#include "server/symbol_kinds.h"

#include <optional>

#include "index/records.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"

namespace rux::server {
namespace {

namespace language = ruxcomp::language;

constexpr int kFile = 1;
constexpr int kNamespace = 3;
constexpr int kProperty = 7;
constexpr int kField = 8;
constexpr int kFunction = 12;
constexpr int kVariable = 13;
constexpr int kConstant = 14;
constexpr int kArray = 18;
constexpr int kObject = 19;

int KindOfSection(language::SectionId section) {
  switch (section) {
    case language::SECTION_GROUP:
    case language::SECTION_PELMGROUP:
      return kNamespace;
    case language::SECTION_ACTION:
      return kFunction;
    case language::SECTION_TABLE:
      return kArray;
    default:
      return kObject;
  }
}

}  // namespace

int SymbolKindOf(language::SectionId section, const std::optional<index::Space>& space) {
  if (!space) return KindOfSection(section);
  if (*space == index::kFiles) return kFile;
  if (*space == index::kWords) return kConstant;
  const language::EntryId entry = space->entry;
  if (entry == language::ENTRY_NAME || entry == language::ENTRY_ID) return KindOfSection(section);
  if (section == language::SECTION_GLOBAL) return kVariable;
  return language::PayloadOf(entry) == language::PAYLOAD_VALUE ? kField : kProperty;
}

}  // namespace rux::server
