#include "page/sources.h"

#include <algorithm>
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

std::string_view FirstPart(std::string_view value) {
  const std::string_view part = value.substr(0, value.find(','));
  return part.substr(0, part.find_last_not_of(" \t") + 1);
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

void SortItems(Excerpt& excerpt) {
  std::stable_sort(excerpt.items.begin(), excerpt.items.end(),
                   [](const auto& a, const auto& b) { return a.key < b.key; });
}

std::string_view FirstPart(const decompile::ScriptItem& item) {
  return item.parts.empty() ? std::string_view() : item.parts.front();
}

std::string LineOf(const decompile::ScriptItem& item) {
  std::string line = item.entry->name + " = ";
  for (const std::string& part : item.parts)
    line += (&part == &item.parts.front() ? "" : ", ") + decompile::PartText(part);
  return line + '\n';
}

void AddOwnText(std::string text, Excerpt& excerpt) {
  excerpt.own_text = std::make_shared<const std::string>(std::move(text));
  std::string_view rest = *excerpt.own_text;
  while (!rest.empty()) {
    const std::size_t end = rest.find('\n');
    excerpt.lines.push_back(rest.substr(0, end));
    rest.remove_prefix(end + 1);
  }
}

}  // namespace

const Excerpt::Item* Excerpt::Find(std::string_view key) const {
  const auto found =
      std::lower_bound(items.begin(), items.end(), key,
                       [](const Item& item, std::string_view wanted) { return item.key < wanted; });
  return found != items.end() && found->key == key ? &*found : nullptr;
}

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
    excerpt.items.push_back({spot->item->key, 0, FirstPart(spot->item->value)});
    AddLines(file, place.line, LastLineOf(file, place.line), excerpt);
    return excerpt;
  }
  std::uint32_t last = section->line;
  for (std::uint32_t i = 0; i < section->item_count; ++i) {
    const ruxcomp::reader::Item& item = section->items[i];
    excerpt.items.push_back({item.key, i, FirstPart(item.value)});
    last = LastLineOf(file, item.line);
  }
  AddLines(file, section->line, last, excerpt);
  SortItems(excerpt);
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
    excerpt.items.push_back({item->second->entry->name, 0, FirstPart(*item->second)});
    AddOwnText(LineOf(*item->second), excerpt);
    return excerpt;
  }
  std::string text = '[' + std::string(section.keyword) + "]\n";
  for (const decompile::ScriptItem& item : section.items) {
    excerpt.items.push_back({item.entry->name, excerpt.items.size(), FirstPart(item)});
    text += LineOf(item);
  }
  AddOwnText(std::move(text), excerpt);
  SortItems(excerpt);
  return excerpt;
}

}  // namespace rux::page
