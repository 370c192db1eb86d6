#include "inspect/where.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "compiled/debug_meta.h"
#include "inspect/debug_find.h"
#include "inspect/debug_text.h"
#include "inspect/entry_value.h"
#include "inspect/path.h"
#include "sources/source_file.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/safe_text.h"

namespace rux::inspect {
namespace {

const compiled::DebugObject& ObjectOf(const DebugFound& found) {
  if (found.entry != nullptr) return *found.entry;
  return *found.section;
}

// What a path may call the section.
std::string LabelText(const compiled::DebugMeta& meta, const compiled::DebugSection& section) {
  const std::optional<std::uint32_t> id = IdOf(meta, section);
  const std::optional<std::string> name = NameOf(section);
  std::string text = id ? fmt::format(" #0x{:X}", *id) : "";
  if (name) text += ' ' + support::NameText(*name);
  return text;
}

}  // namespace

std::vector<DebugFound> FindPlaces(const std::string& file, const compiled::DebugMeta& meta,
                                   const std::vector<PathStep>& path) {
  std::vector<DebugFound> places =
      path.size() == 1 ? FindKind(meta, path.front().text) : Find(meta, path);
  for (const DebugFound& found : places) {
    const compiled::DebugObject& object = ObjectOf(found);
    if (object.file_index < meta.files.size()) continue;
    throw support::Failure(support::ExitStatus::kFindings,
                           "{} does not list its source files; the place is line {} of file {}",
                           file, object.line, object.file_index);
  }
  return places;
}

std::string PlacesText(const compiled::DebugMeta& meta, const std::vector<DebugFound>& places,
                       bool is_list) {
  const SourcePlaces sources(meta);
  std::string text;
  for (const DebugFound& found : places) {
    text += sources.Of(ObjectOf(found)) + ": [" + support::SafeText(found.section->name) + ']';
    if (found.entry != nullptr) {
      text += ' ' + EntryText(*found.entry);
    } else if (is_list) {
      text += LabelText(meta, *found.section);
    }
    text += '\n';
  }
  return text;
}

void WritePlaces(support::JsonObject& json, const std::string& file,
                 const compiled::DebugMeta& meta, const std::vector<DebugFound>& places) {
  constexpr std::size_t kSchema = 1;  // raised when a member changes its meaning or is removed
  json.Member("schema", kSchema);
  json.Member("file", file);
  json.Objects("places", places, [&](support::JsonObject& object, const DebugFound& found) {
    const compiled::DebugObject& at = ObjectOf(found);
    WriteText(object, "source", sources::ToOpenablePath(meta.files[at.file_index]));
    object.Member("line", at.line);
    object.Member("kind", found.section->name);
    if (const auto name = NameOf(*found.section)) object.Member("name", *name);
    if (const auto id = IdOf(meta, *found.section)) object.Member("id", *id);
    if (found.entry == nullptr) return;
    object.Member("key", found.entry->name);
    object.Member("value", ValueText(*found.entry));
  });
}

}  // namespace rux::inspect
