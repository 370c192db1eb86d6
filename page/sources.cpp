#include "page/sources.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "compiled/debug_meta.h"
#include "decompile/decompile.h"
#include "machine/place.h"
#include "reader/script.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/text_file.h"

namespace rux::page {
namespace {

namespace language = ruxcomp::language;

std::string FirstPart(std::string_view value) {
  const std::string_view part = value.substr(0, value.find(','));
  return std::string(part.substr(0, part.find_last_not_of(" \t") + 1));
}

bool IsComment(std::string_view line) {
  const std::size_t first = line.find_first_not_of(" \t");
  return first != std::string_view::npos && (line[first] == '#' || line[first] == ';');
}

std::uint32_t LastLineOf(const sources::SourceFile& file, std::uint32_t line) {
  const support::ByteRange range = file.JoinedLines(line);
  return range.end > range.begin ? file.LineAt(range.end - 1) : line;
}

// The lines with the comment right above them.
void AddLines(const sources::SourceFile& file, std::uint32_t first, std::uint32_t last,
              Excerpt& excerpt) {
  while (first > 1 && IsComment(file.Line(first - 1))) --first;
  for (std::uint32_t line = first; line <= last; ++line)
    excerpt.lines.emplace_back(file.Line(line));
}

void AddItem(std::string_view key, std::string first_part, Excerpt& excerpt) {
  excerpt.items.try_emplace(std::string(key),
                            Excerpt::Item{excerpt.items.size(), std::move(first_part)});
}

void AddItem(const decompile::ScriptItem& item, Excerpt& excerpt) {
  std::string line = item.entry->name + " = ";
  for (const std::string& part : item.parts)
    line += (&part == &item.parts.front() ? "" : ", ") + decompile::PartText(part);
  excerpt.lines.push_back(std::move(line));
  AddItem(item.entry->name, item.parts.empty() ? "" : item.parts.front(), excerpt);
}

}  // namespace

Sources::Sources(sources::SourceSet scripts) : scripts_(std::move(scripts)) {
  for (const sources::Opening& opening : scripts_.openings())
    files_.emplace(opening.file->path(), opening.file);
}

Sources::Sources(compiled::DebugMeta debug_meta)
    : debug_meta_(std::make_unique<const compiled::DebugMeta>(std::move(debug_meta))),
      sections_(decompile::ScriptSectionsOf(*debug_meta_)) {
  for (const decompile::ScriptSection& section : sections_) {
    const language::SectionKind* kind = language::FindKind(section.keyword);
    if (kind == nullptr) continue;
    by_kind_[kind->source].push_back(&section);
    if (kind->naming != language::Naming::kByKeys) continue;
    for (const decompile::ScriptItem& item : section.items)
      by_key_.try_emplace({&section, item.entry->name}, &item);
  }
}

std::optional<Excerpt> Sources::Of(const language::SectionKind& kind, std::size_t ordinal,
                                   std::string_view key,
                                   const std::optional<machine::Place>& place) const {
  if (debug_meta_ != nullptr) return InDebugMeta(kind, ordinal, key);
  return place ? InScript(*place, !key.empty()) : std::nullopt;
}

std::optional<Excerpt> Sources::InScript(const machine::Place& place, bool is_item) const {
  const auto found = files_.find(place.path);
  if (found == files_.end()) return std::nullopt;
  const sources::SourceFile& file = *found->second;
  const ruxcomp::reader::Section* section = file.SectionAt(place.line);
  if (section == nullptr) return std::nullopt;
  Excerpt excerpt;
  if (is_item) {
    const std::optional<sources::SourceSpot> spot = file.At(place.line);
    if (!spot || spot->item == nullptr) return std::nullopt;
    AddItem(spot->item->key, FirstPart(spot->item->value), excerpt);
    AddLines(file, place.line, LastLineOf(file, place.line), excerpt);
    return excerpt;
  }
  std::uint32_t last = section->line;
  for (std::uint32_t i = 0; i < section->item_count; ++i) {
    const ruxcomp::reader::Item& item = section->items[i];
    AddItem(item.key, FirstPart(item.value), excerpt);
    last = LastLineOf(file, item.line);
  }
  AddLines(file, section->line, last, excerpt);
  return excerpt;
}

std::optional<Excerpt> Sources::InDebugMeta(const language::SectionKind& kind, std::size_t ordinal,
                                            std::string_view key) const {
  const auto found = by_kind_.find(kind.source);
  if (found == by_kind_.end() || ordinal >= found->second.size()) return std::nullopt;
  const decompile::ScriptSection& section = *found->second[ordinal];
  Excerpt excerpt;
  if (!key.empty()) {
    const auto item = by_key_.find({&section, key});
    if (item == by_key_.end()) return std::nullopt;
    AddItem(*item->second, excerpt);
    return excerpt;
  }
  excerpt.lines.push_back('[' + std::string(section.keyword) + ']');
  for (const decompile::ScriptItem& item : section.items) AddItem(item, excerpt);
  return excerpt;
}

}  // namespace rux::page
