#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/debug_meta.h"
#include "decompile/decompile.h"
#include "reader/script.h"
#include "reader/value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"  // IWYU pragma: keep
#include "ruxcomp/language/symbols.h"
#include "sources/source_file.h"
#include "support/safe_text.h"

namespace rux::decompile {
namespace {

// "boards/board.rux:12", as far as the file records it.
std::string PlaceOf(const compiled::DebugMeta& meta, const compiled::DebugObject& object) {
  if (object.file_index >= meta.files.size()) return fmt::format("line {}", object.line);
  const std::string path = sources::ToOpenablePath(meta.files[object.file_index]);
  return fmt::format("{}:{}", support::SafeText(path), object.line);
}

namespace language = ruxcomp::language;

// The text of an entry that a section has; empty when the script did not give it.
std::string_view TextOf(const compiled::DebugSection& section, language::EntryId identifier) {
  for (const compiled::DebugEntry& entry : section.entries) {
    if (entry.identifier == identifier && !entry.fields.empty()) {
      return entry.fields.front().texts.front();
    }
  }
  return {};
}

bool IsReadAs(const ruxcomp::reader::Item& read, const ScriptItem& item) {
  const std::vector<std::string_view> parts = ruxcomp::reader::Parts(read);
  return read.key == item.entry->name &&
         std::equal(parts.begin(), parts.end(), item.parts.begin(), item.parts.end());
}

}  // namespace

std::optional<std::string> GroupBeforeParent(const compiled::DebugMeta& meta) {
  for (const std::vector<compiled::DebugSection>& kind : meta.kinds) {
    if (kind.empty() || kind.front().identifier != language::SECTION_GROUP) continue;
    std::map<std::string_view, std::size_t> ordinals;
    for (std::size_t i = 0; i < kind.size(); ++i)
      ordinals.emplace(TextOf(kind[i], language::ENTRY_NAME), i);
    for (std::size_t i = 0; i < kind.size(); ++i) {
      const std::string_view name = TextOf(kind[i], language::ENTRY_PARENT);
      const auto parent = name == language::kRootGroup ? ordinals.end() : ordinals.find(name);
      if (parent == ordinals.end() || parent->second <= i) continue;
      return fmt::format(
          "{}: [GROUP] {} comes before its parent {} ({}): several files can have that order, a "
          "single script cannot",
          PlaceOf(meta, kind[i]), support::NameText(TextOf(kind[i], language::ENTRY_NAME)),
          support::NameText(parent->first), PlaceOf(meta, kind[parent->second]));
    }
  }
  return std::nullopt;
}

std::optional<std::string> MisreadItem(const KeptScript& kept) {
  const ruxcomp::reader::Script script(kept.text, [](const ruxcomp::reader::Problem&) {});
  auto read = script.sections().begin();
  for (const ScriptSection& section : kept.sections) {
    const bool is_there = read != script.sections().end() && read->name == section.keyword;
    for (std::size_t i = 0; i < section.items.size(); ++i) {
      const ScriptItem& item = section.items[i];
      if (is_there && i < read->item_count && IsReadAs(read->items[i], item)) continue;
      return fmt::format("{}: [{}] {} has bytes that no script can express",
                         PlaceOf(kept.meta, *item.entry), section.keyword,
                         support::NameText(item.entry->name));
    }
    if (read != script.sections().end()) ++read;
  }
  return std::nullopt;
}

}  // namespace rux::decompile
