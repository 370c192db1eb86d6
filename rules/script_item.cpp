#include "rules/script_item.h"

#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "sources/source_file.h"

namespace rux::rules {

std::vector<const ScriptFile*> FilesOf(const Script& script) {
  std::vector<const ScriptFile*> files;
  std::set<const ScriptFile*> known;
  for (const ScriptSection& section : script.sections()) {
    if (known.insert(section.file).second) files.push_back(section.file);
  }
  return files;
}

std::optional<ItemRef> FindItemOnLine(const ScriptFile& file, std::uint32_t line) {
  const std::optional<sources::SourceSpot> spot = file.At(line);
  if (!spot || spot->item == nullptr) return std::nullopt;
  return ItemRef{&file, spot->section, spot->item};
}

}  // namespace rux::rules
