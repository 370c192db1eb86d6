#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "browse/relations.h"
#include "compiled/debug_meta.h"
#include "decompile/decompile.h"
#include "index/index.h"
#include "index/records.h"
#include "machine/load.h"
#include "machine/place.h"
#include "machine/source.h"
#include "reader/include_folders.h"
#include "reader/texts.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/paths.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/failure.h"

namespace rux::browse {
namespace {

using index::Id;
using index::Index;
using index::kNone;
// Where a section is, or an item of it. Both are counted from 0, the item in all of the index.
using PlaceOf = std::function<std::optional<machine::Place>(Id section, Id item)>;

// Whether others refer to the items of such sections by their keys.
bool HasNamedItems(const language::SectionKind& kind) {
  return kind.naming == language::Naming::kByKeys || kind.source == language::SECTION_DEFINE ||
         kind.source == language::SECTION_IFDEF;
}

class Reader {
 public:
  Reader(const Index& index, PlaceOf place_of) : index_(index), place_of_(std::move(place_of)) {}

  Relations Read() {
    things_.resize(index_.items().size(), kNothing);
    for (Id section = 0; section < index_.sections().size(); ++section) AddThings(section);
    for (Id item = 0; item < index_.items().size(); ++item) AddLinks(item);
    return std::move(relations_);
  }

 private:
  static constexpr std::size_t kNothing = static_cast<std::size_t>(-1);

  void AddThings(Id section) {
    const language::SectionKind* kind = index_.sections()[section].kind;
    if (kind == nullptr || kind->form == language::Form::kNotRestored) return;
    const Id first = index_.sections()[section].first_item;
    const auto count = static_cast<Id>(index_.ItemsOf(section).size());
    if (HasNamedItems(*kind)) {
      for (Id item = first; item < first + count; ++item) things_[item] = AddItem(*kind, item);
      return;
    }
    Thing thing{kind};
    const std::string_view name = index_.TextOf(section, language::ENTRY_NAME);
    if (kind->HasNames() && !name.empty()) thing.name = std::string(name);
    const Id id = index_.DefinitionIn(section, language::ENTRY_ID);
    if (id != kNone) thing.id = index_.definitions()[id].value;
    thing.place = place_of_(section, kNone);
    const std::size_t number = relations_.Add(std::move(thing));
    for (Id item = first; item < first + count; ++item) things_[item] = number;
  }

  std::size_t AddItem(const language::SectionKind& kind, Id item) {
    Thing thing{&kind};
    thing.key = std::string(index_.items()[item].item->key);
    for (const index::Definition& definition : index_.DefinitionsIn(item)) {
      if (definition.symbol == kNone) continue;
      if (index_.symbols()[definition.symbol].space == index::kWords)
        thing.number = definition.value;
    }
    thing.place = place_of_(index_.items()[item].section, item);
    return relations_.Add(std::move(thing));
  }

  void AddLinks(Id item) {
    if (things_[item] == kNothing) return;
    const index::ItemRecord& record = index_.items()[item];
    const language::SectionId section = index_.sections()[record.section].kind->source;
    const bool is_membership = language::FindReference(section, record.entry) != nullptr;
    for (const index::Reference& reference : index_.ReferencesIn(item)) {
      if (reference.definition == kNone || !IsToThing(reference)) continue;
      const Id defining = index_.definitions()[reference.definition].item;
      if (defining == kNone || things_[defining] == kNothing) continue;
      const bool is_word = reference.space == index::kWords;
      relations_.Add(Link{things_[item], things_[defining], std::string(record.item->key),
                          is_membership && !is_word, place_of_(record.section, item)});
    }
  }

  // A sensor's ID is looked for in the lists, which refer to the sensor themselves. Files, and
  // what has a name inside its section only, are left out.
  static bool IsToThing(const index::Reference& reference) {
    return reference.space != index::kFiles && !index::IsLocal(reference.space) &&
           language::PayloadOf(reference.space.entry) != language::PAYLOAD_STRINGLIST;
  }

  const Index& index_;
  const PlaceOf place_of_;
  Relations relations_;
  std::vector<std::size_t> things_;  // by items
};

Relations OfScript(const machine::Source& source, const machine::LoadOptions& options) {
  const std::vector<std::string> folders = machine::IncludeFoldersFor(source, options);
  const ruxcomp::reader::IncludeFolders include_folders(folders);
  machine::ReadScriptsOf(source);
  const sources::SourceSet sources = sources::Load(ruxcomp::language::ToLibraryPath(source.path));
  const Index index(sources);
  return Reader(index,
                [&](Id section, Id item) -> std::optional<machine::Place> {
                  const index::SectionRecord& record = index.sections()[section];
                  const std::uint32_t line =
                      item == kNone ? record.section->line : index.items()[item].item->line;
                  return machine::Place{index.files()[record.file]->path(), line, source.revision};
                })
      .Read();
}

// A debug meta file is read as the script that it keeps, of which it knows the lines.
Relations OfDebugMeta(const machine::Source& source) {
  const decompile::KeptScript kept =
      decompile::KeptScriptOf(compiled::SoundDebugMeta(source.name, source.bytes->view()));
  if (const auto obstacle = decompile::MisreadItem(kept)) {
    throw support::Failure(support::ExitStatus::kTrouble, "cannot read {}: {}", source.name,
                           *obstacle);
  }
  const char* const script = "decompiled";
  ruxcomp::reader::Texts::ReplaceFiles([&](const std::string& path) -> std::optional<std::string> {
    return path == script ? std::optional(kept.text) : std::nullopt;
  });
  const sources::SourceSet sources = sources::Load(script);
  const Index index(sources);
  return Reader(index,
                [&](Id section, Id item) -> std::optional<machine::Place> {
                  const decompile::ScriptSection& written = kept.sections[section];
                  const compiled::DebugObject* at = written.source;
                  if (item != kNone)
                    at = written.items[item - index.sections()[section].first_item].entry;
                  if (at->file_index >= kept.meta.files.size()) return std::nullopt;
                  return machine::Place{sources::ToOpenablePath(kept.meta.files[at->file_index]),
                                        at->line, source.revision};
                })
      .Read();
}

}  // namespace

Relations ReadRelations(const std::string& name, const machine::LoadOptions& options) {
  const machine::Source source = machine::ReadSource(name);
  switch (source.form) {
    case ruxcomp::file::Form::kMeta:
      return MachineRelations(machine::Load({name}, options).front());
    case ruxcomp::file::Form::kDebugMeta:
      return OfDebugMeta(source);
    default:
      return OfScript(source, options);
  }
}

}  // namespace rux::browse
