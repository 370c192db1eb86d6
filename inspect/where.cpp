#include "inspect/where.h"

#include <cstddef>
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
#include "support/number_text.h"
#include "support/safe_text.h"
#include "support/terminal.h"
#include "support/wrap.h"

namespace rux::inspect {
namespace {

const compiled::DebugObject& ObjectOf(const DebugFound& found) {
  if (found.entry != nullptr) return *found.entry;
  return *found.section;
}

// What a path may call the section.
std::vector<std::string> LabelPieces(const compiled::DebugMeta& meta,
                                     const compiled::DebugSection& section) {
  std::vector<std::string> pieces;
  if (const auto id = IdOf(meta, section)) pieces.push_back(support::IdText(*id));
  if (const auto name = NameOf(section)) pieces.push_back(support::NameText(*name));
  return pieces;
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
                       support::OutputStyle style) {
  constexpr std::size_t kIndent = 4;
  const SourcePlaces sources(meta);
  const EntryTexts texts(meta);
  std::string text;
  for (const DebugFound& found : places) {
    const std::string place = sources.Of(ObjectOf(found)) + ':';
    std::vector<std::string> pieces = found.entry != nullptr
                                          ? texts.Of(*found.section, *found.entry)
                                          : LabelPieces(meta, *found.section);
    pieces.insert(pieces.begin(), {place, '[' + support::SafeText(found.section->name) + ']'});
    const std::string line = support::WrappedLine(pieces, style.width, kIndent);
    text += support::Bold(place, style.uses_colour) + line.substr(place.size()) + '\n';
  }
  return text;
}

void WritePlaces(support::JsonObject& json, const std::string& file,
                 const compiled::DebugMeta& meta, const std::vector<DebugFound>& places) {
  json.Schema(1);
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
