#include "inspect/debug_text.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "compiled/debug_meta.h"
#include "inspect/debug_find.h"
#include "inspect/entry_value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"
#include "support/safe_text.h"
#include "support/wrap.h"

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

// The value in pieces, each text shown by `shown`.
template <class Shown>
std::vector<std::string> ValuePiecesBy(const compiled::DebugEntry& entry, Shown shown) {
  if (ruxcomp::language::PayloadOf(entry.payload_type) == ruxcomp::language::PAYLOAD_DWORD) {
    return {NumberText(entry.number)};
  }
  std::vector<std::string> pieces;
  const std::size_t count = CountOfGivenFields(entry.fields);
  for (std::size_t i = 0; i < count; ++i) {
    for (const std::string& text : entry.fields[i].texts) support::AddToList(pieces, shown(text));
  }
  if (pieces.empty()) pieces.emplace_back("(none)");
  return pieces;
}

}  // namespace

std::string ValueText(const compiled::DebugEntry& entry) {
  return support::WrappedLine(ValuePiecesBy(entry, ScriptText), support::kEndless, 0);
}

std::vector<std::string> EntryTexts::Of(const compiled::DebugSection& section,
                                        const compiled::DebugEntry& entry) const {
  std::vector<std::string> pieces = ValuePiecesBy(entry, [&](const std::string& text) {
    const std::string name = NameFor(section, entry, text);
    return name.empty() ? ScriptText(text) : ScriptText(text) + ' ' + support::NameText(name);
  });
  pieces.front().insert(0, KeyText(entry) + " = ");
  return pieces;
}

std::string EntryTexts::NameFor(const compiled::DebugSection& section,
                                const compiled::DebugEntry& entry, const std::string& text) const {
  const ruxcomp::language::SectionKind* kind = KindOfIds(section.identifier, entry.identifier);
  const auto id = kind == nullptr ? std::nullopt : NumberOf(meta_, text);
  return id ? names_.Of(kind, *id) : "";
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
