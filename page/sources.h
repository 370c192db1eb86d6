// What scripts say about a machine, as they are written.
#ifndef PAGE_SOURCES_H_
#define PAGE_SOURCES_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiled/debug_meta.h"
#include "decompile/decompile.h"
#include "machine/place.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"
#include "sources/source_set.h"

namespace rux::page {

// A section, or an item of one. Valid as long as the sources that it is of.
struct Excerpt {
  struct Item {
    std::string_view key;
    std::size_t ordinal;  // among those of the section
    // Of its value: of one that says what to do, the word for its type.
    std::string_view first_part;
  };
  // The first one with that key; null when there is none.
  const Item* Find(std::string_view key) const;

  std::vector<std::string_view> lines;
  std::vector<Item> items;  // by their keys
  std::shared_ptr<const std::string> own_text =
      {};  // that the lines are of, where no file has them
};

class Sources {
 public:
  // None are known.
  Sources() = default;
  // Of a script that was read, with comments.
  explicit Sources(sources::SourceSet scripts);
  // Of a sound debug meta file, which keeps no comments.
  explicit Sources(compiled::DebugMeta debug_meta);

  // Of the ordinal-th section of a kind, or of its item with that key. None when it is not known.
  std::optional<Excerpt> Of(const ruxcomp::language::SectionKind& kind, std::size_t ordinal,
                            std::string_view key, const std::optional<machine::Place>& place) const;

 private:
  std::optional<Excerpt> InScript(const machine::Place& place, bool is_item) const;
  std::optional<Excerpt> InDebugMeta(const ruxcomp::language::SectionKind& kind,
                                     std::size_t ordinal, std::string_view key) const;

  sources::SourceSet scripts_;
  std::map<std::string, const sources::SourceFile*, std::less<>> files_;  // by paths of places
  std::unique_ptr<const compiled::DebugMeta> debug_meta_;
  std::map<ruxcomp::language::SectionId, std::vector<const decompile::ScriptSection*>> by_kind_;
  std::vector<decompile::ScriptSection> sections_;
  // The items of sections that others refer to by key.
  std::map<std::pair<const decompile::ScriptSection*, std::string_view>,
           const decompile::ScriptItem*>
      by_key_;
};

}  // namespace rux::page

#endif  // PAGE_SOURCES_H_
