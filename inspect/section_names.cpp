#include "inspect/section_names.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "compiled/datum.h"
#include "compiled/debug_meta.h"
#include "compiled/meta.h"
#include "inspect/debug_find.h"
#include "inspect/entry_value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"

namespace rux::inspect {
namespace {

namespace language = ruxcomp::language;

// What such an entry of the section stands for; none when the section has no such entry.
std::optional<compiled::Datum> DatumOf(const compiled::CompiledMeta& meta,
                                       const compiled::CompiledSection& section,
                                       language::EntryId identifier) {
  const std::uint32_t sought = language::FindEntryRow(identifier)->compiled;
  for (const compiled::CompiledEntry& entry : section.entries) {
    if (entry.identifier == sought && !entry.values.empty())
      return compiled::Resolve(meta, entry.values.front());
  }
  return std::nullopt;
}

}  // namespace

SectionNames::SectionNames(const compiled::CompiledMeta& meta)
    : list_([&meta](const language::SectionKind& kind) {
        ById names;
        for (const compiled::CompiledSection& section : meta.sections) {
          if (section.identifier != kind.compiled) continue;
          const auto id = DatumOf(meta, section, language::ENTRY_ID);
          const auto name = DatumOf(meta, section, language::ENTRY_NAME);
          if (id && name) names.emplace(id->number, name->text);
        }
        return names;
      }) {}

SectionNames::SectionNames(const compiled::DebugMeta& meta)
    : list_([&meta](const language::SectionKind& kind) {
        ById names;
        for (const std::vector<compiled::DebugSection>& sections : meta.kinds) {
          for (const compiled::DebugSection& section : sections) {
            if (section.identifier != kind.source) continue;
            const std::optional<std::uint32_t> id = IdOf(meta, section);
            const std::optional<std::string> name = NameOf(section);
            if (id && name) names.emplace(*id, *name);
          }
        }
        return names;
      }) {}

std::string SectionNames::Of(const language::SectionKind* kind, std::uint32_t id) const {
  if (kind == nullptr) return "";
  const auto [names, is_new] = by_kind_.try_emplace(kind->source);
  if (is_new) names->second = list_(*kind);
  const auto found = names->second.find(id);
  return found == names->second.end() ? "" : found->second;
}

std::vector<compiled::Datum> CompiledValues::Of(const compiled::CompiledSection& section,
                                                const compiled::CompiledEntry& entry) const {
  const language::SectionKind* kind = KindOfCompiledIds(section.identifier, entry.identifier);
  std::vector<compiled::Datum> values;
  values.reserve(entry.values.size());
  for (const std::uint32_t word : entry.values) {
    compiled::Datum& value = values.emplace_back(compiled::Resolve(meta_, word));
    if (value.IsNumber()) value.name = names_.Of(kind, value.number);
  }
  return values;
}

}  // namespace rux::inspect
