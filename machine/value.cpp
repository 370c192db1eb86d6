#include "machine/value.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/datum.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/selectors.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/records.h"

namespace rux::machine {

namespace language = ruxcomp::language;

bool IsLabel(const ruxcomp::Entry& entry) {
  return entry.identifier() == RUX_ENTRY_NAME || entry.identifier() == RUX_ENTRY_ID;
}

const language::LimitRow* LimitWith(std::uint32_t identifier) {
  const language::EntryRow* row = language::FindCompiledEntryRow(identifier);
  return row == nullptr ? nullptr : language::FindLimit(row->source);
}

compiled::Datum DatumOf(const ruxcomp::Value& value) {
  if (const std::optional<compiled::Datum> immediate = compiled::ImmediateDatum(value.index()))
    return *immediate;
  switch (value.kind()) {
    case RUX_DATA_NUMBER:
      return compiled::NumberDatum(value.number());
    case RUX_DATA_STRING:
      return compiled::TextDatum(value.index(), value.text());
    default:
      return {};
  }
}

namespace {

// The values from one position up to, and not with, another.
EntryPart PartOf(const ruxcomp::Values& values, const char* name, bool is_list, std::size_t begin,
                 std::size_t end) {
  EntryPart part{name, is_list, {}};
  for (std::size_t i = begin; i < std::min(end, values.size()); ++i) {
    part.items.push_back(DatumOf(values[i]));
  }
  return part;
}

// The parts of an entry whose values from `begin` on are described by a type.
std::vector<EntryPart> PartsOf(const ruxcomp::Values& values, std::uint32_t type,
                               std::size_t begin) {
  std::vector<EntryPart> parts;
  for (const language::SelectorRow& row : language::kSelectorRows) {
    if (!row.Fits(type, values.size())) continue;
    // The items of a group follow the value that its bare selector picks.
    const bool is_list = row.last > row.first;
    const std::size_t first = std::size_t{row.first} + (is_list ? 1 : 0);
    parts.push_back(PartOf(values, row.part, is_list, first, std::size_t{row.last} + 1));
    parts.back().is_address = IsAddress(type, row.part);
  }
  if (parts.empty() && values.size() > begin) {
    parts.push_back(PartOf(values, "Values", true, begin, values.size()));
  }
  return parts;
}

}  // namespace

EntryValue ValueOf(const ruxcomp::Entry& entry) {
  const ruxcomp::Values values = entry.values();
  const std::uint32_t entry_class = language::ClassOf(entry.identifier());
  if (entry_class == RUX_CLASS_Repeater) {
    return {std::nullopt, PartsOf(values, language::kRepeaterType, 0)};
  }
  if (entry_class == RUX_CLASS_Value || entry_class == RUX_CLASS_Global) {
    const compiled::Datum type = DatumOf(entry.value());
    if (type.Is(language::CLASS_ValueType)) return {type.number, PartsOf(values, type.number, 1)};
  }
  return {std::nullopt, {PartOf(values, "", values.size() != 1, 0, values.size())}};
}

bool IsAddress(std::uint32_t type, std::string_view part) {
  const language::Shape shape = language::FindValueType(type).shape;
  return (shape == language::Shape::kBus || shape == language::Shape::kBusArgs) &&
         (part == "Operand" || part == "BaseAddress");
}

const language::SectionKind* KindOfIds(std::uint32_t section, std::uint32_t entry) {
  const language::Reference* reference = language::FindReference(section, entry);
  const bool is_id = reference != nullptr && reference->key == language::ENTRY_ID;
  return is_id ? language::FindSourceKind(reference->target) : nullptr;
}

const language::SectionKind* KindOfCompiledIds(std::uint32_t section, std::uint32_t entry) {
  const language::EntryRow* row = language::FindCompiledEntryRow(entry);
  return row == nullptr ? nullptr : KindOfIds(language::SourceSection(section), row->source);
}

const language::SectionKind* KindOfNames(std::uint32_t index_class) {
  const language::KeySource* source = language::FindRow(
      language::kKeySources,
      [&](const language::KeySource& row) { return row.table == index_class && row.is_text; });
  return source == nullptr ? nullptr : &language::KindOf(source->section);
}

ruxcomp::Section SectionFor(const ruxcomp::Model& model, const language::SectionKind* ids,
                            const compiled::Datum& datum) {
  if (datum.IsNumber())
    return ids == nullptr ? ruxcomp::Section() : model.section_with_id(ids->compiled, datum.number);
  const language::SectionKind* kind = datum.row == nullptr ? nullptr : KindOfNames(datum.row->base);
  return kind == nullptr ? ruxcomp::Section() : model.section_named(kind->compiled, datum.text);
}

EntryValue NamedValueOf(const ruxcomp::Model& model, const ruxcomp::Section& section,
                        const ruxcomp::Entry& entry) {
  EntryValue value = ValueOf(entry);
  const language::SectionKind* target = KindOfCompiledIds(section.kind(), entry.identifier());
  if (target == nullptr) return value;
  for (EntryPart& part : value.parts) {
    for (compiled::Datum& item : part.items) {
      const ruxcomp::Section named = SectionFor(model, target, item);
      if (named && named.has_name()) item.name = named.name();
    }
  }
  return value;
}

std::string KeyOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry) {
  std::string key =
      compiled::KeyText(section.kind(), entry.identifier(), DatumOf(entry.identity()));
  return key.empty() ? fmt::format("(entry 0x{:08X})", entry.identifier()) : key;
}

}  // namespace rux::machine
