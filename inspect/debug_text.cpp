#include "inspect/debug_text.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "compiled/debug_meta.h"
#include "inspect/entry_value.h"
#include "ruxcomp/language/entries.h"
#include "sources/source_file.h"
#include "support/safe_text.h"

namespace rux::inspect {
namespace {

// A sub-string as a script can write it.
std::string ScriptText(const std::string& text) {
  const bool needs_quotes = text.empty() || text.find_first_of(" \t,;#") != std::string::npos;
  return needs_quotes ? '"' + support::SafeText(text) + '"' : support::SafeText(text);
}

// The fields without the empty texts at the end: a calculation has more of them than its operator
// may need.
std::size_t CountOfGivenFields(const std::vector<compiled::DebugField>& fields) {
  std::size_t count = fields.size();
  while (count > 1 && !fields[count - 1].is_list && fields[count - 1].texts.front().empty()) {
    --count;
  }
  return count;
}

}  // namespace

std::string ValueText(const compiled::DebugEntry& entry) {
  if (ruxcomp::language::PayloadOf(entry.payload_type) == ruxcomp::language::PAYLOAD_DWORD) {
    return NumberText(entry.number);
  }
  std::string joined;
  const std::size_t count = CountOfGivenFields(entry.fields);
  for (std::size_t i = 0; i < count; ++i) {
    for (const std::string& text : entry.fields[i].texts) {
      joined += (joined.empty() ? "" : ", ") + ScriptText(text);
    }
  }
  return joined.empty() ? "(none)" : joined;
}

std::string EntryText(const compiled::DebugEntry& entry) {
  return KeyText(entry) + " = " + ValueText(entry);
}

std::string KeyText(const compiled::DebugEntry& entry) {
  return support::SafeText(entry.payload_type == 0
                               ? ruxcomp::language::FindEntryRow(entry.identifier)->keyword
                               : entry.name);
}

std::vector<std::string> NotationNames(std::uint32_t notation) {
  std::vector<std::string> names;
  for (const auto& [bit, title] : ruxcomp::language::kNotationBits) {
    if ((notation & bit) != 0) names.emplace_back(title);
    notation &= ~bit;
  }
  if (notation != 0) names.push_back(fmt::format("unknown bits 0x{:X}", notation));
  return names;
}

SourcePlaces::SourcePlaces(const compiled::DebugMeta& meta) {
  for (const std::string& file : meta.files)
    paths_.push_back(support::SafePath(sources::ToOpenablePath(file)));
}

std::string SourcePlaces::Of(const compiled::DebugObject& object) const {
  const std::string path = object.file_index < paths_.size()
                               ? paths_[object.file_index]
                               : fmt::format("(file {})", object.file_index);
  return fmt::format("{}:{}", path, object.line);
}

}  // namespace rux::inspect
