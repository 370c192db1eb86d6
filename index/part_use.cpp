#include "index/part_use.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"

namespace rux::index {
namespace {

// `part` counts without the type, `kept` is how many such parts the library keeps.
PartUse UseOfField(const language::ValueType& record, std::size_t part, std::size_t kept) {
  const std::size_t fields = record.fields.size();
  if (part >= kept || fields == 0 || (part >= fields && !record.HasList())) {
    return {Use::kDropped};
  }
  const language::Field& field = record.fields[std::min(part, fields - 1)];
  return {Use::kField, record.RoleOf(part), &field};
}

PartUse UseOfText(language::SectionId section, std::uint32_t entry) {
  if (entry == language::ENTRY_FILE) return {Use::kPath};
  if (language::TextUseOf(section, entry) == language::TextUse::kWord) return {Use::kWord};
  PartUse use;
  if (language::IsNumericString(entry)) use.use = Use::kNumber;
  use.reference = language::FindReference(section, entry);
  return use;
}

}  // namespace

PartUse UseOfPart(language::SectionId section, std::uint32_t entry,
                  const language::ValueType* record, std::size_t part) {
  switch (language::PayloadOf(entry)) {
    case language::PAYLOAD_DWORD:
      return {part == 0 ? Use::kNumber : Use::kDropped};
    case language::PAYLOAD_STRING:
      return part == 0 ? UseOfText(section, entry) : PartUse{Use::kDropped};
    case language::PAYLOAD_STRINGLIST: {
      PartUse use{Use::kNumber};
      use.reference = language::FindReference(section, entry);
      return use;
    }
    case language::PAYLOAD_VALUE:
      if (part == 0) return {Use::kType};
      if (record == nullptr) return {Use::kDropped};
      return UseOfField(*record, part - 1, record->MostKept() - 1);
    case language::PAYLOAD_REPEATER:
      return UseOfField(language::kRepeaterRecord, part, language::kAnyNumber);
    default:
      return {Use::kDropped};
  }
}

}  // namespace rux::index
