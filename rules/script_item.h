// Scripts and their items, as the rules see them, and tables of their texts. All that the rules
// need of `sources/` is here.
#ifndef RULES_SCRIPT_ITEM_H_
#define RULES_SCRIPT_ITEM_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "ruxcomp/language/keys.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/model/seeded_hash.h"
#include "sources/source_set.h"
#include "support/text_file.h"

namespace rux::rules {

// Tables by texts of scripts, whose writer may choose them: all take their hash from here.
using TextHash = ruxcomp::detail::SeededHash;

template <class Value>
using TextMap = ruxcomp::detail::HashMap<std::string_view, Value>;

using TextSet = ruxcomp::detail::HashSet<std::string_view>;

namespace language = ruxcomp::language;

using Script = sources::SourceSet;
using ScriptFile = sources::SourceFile;
using ScriptSection = sources::SourceSection;
using Place = sources::SourcePlace;

// Bytes of a file.
struct Bytes {
  const ScriptFile* file = nullptr;
  support::ByteRange range = {};
};

// Whether all files of the script are known. What came through a pipe is not.
inline bool IsComplete(const Script& script) { return script.files().complete; }
// Whether the sections of a file occur more than once.
inline bool HasRepeatedIncludes(const Script& script) { return script.has_repeated_includes(); }
// The files with sections, each once, in the order in which they were met.
std::vector<const ScriptFile*> FilesOf(const Script& script);

// Where an item is. Views of it are valid as long as the script.
struct ItemRef {
  const ScriptFile* file;
  const ruxcomp::reader::Section* section;
  const ruxcomp::reader::Item* item;

  std::string_view name() const { return item->key; }
  Place place() const { return {file, item->line}; }
};

// The item that begins on a line; none when that is not an item.
std::optional<ItemRef> FindItemOnLine(const ScriptFile& file, std::uint32_t line);

struct ScriptItem : ItemRef {
  const language::SectionKind* kind;
  std::uint32_t entry;                         // 0: the section does not take it
  const std::vector<std::string_view>& parts;  // of the value

  // Of a value whose type is known, and of a repeater: what its parts are, from the first_field-th
  // part on. Null for others.
  const language::ValueType* record = nullptr;
  std::size_t first_field = 0;
  std::uint32_t type = 0;  // the number of that type

  std::string_view first() const { return parts.empty() ? std::string_view() : parts.front(); }
  bool IsIn(language::SectionId id) const { return kind->source == id; }
};

// The fields of each shape.
inline constexpr std::size_t kShapeCount = static_cast<std::size_t>(language::Shape::kRepeater) + 1;
using FieldsByShape = std::array<language::Rows<language::Field>, kShapeCount>;
constexpr FieldsByShape MakeFieldsByShape() {
  FieldsByShape fields{};
  for (std::size_t i = 0; i < kShapeCount; ++i) {
    fields[i] = language::FieldsOfShape(static_cast<language::Shape>(i));
  }
  return fields;
}
inline constexpr FieldsByShape kFieldsByShape = MakeFieldsByShape();

// Calls use(part, role) for the parts that the fields of the record take, a list at their end any
// number of them.
template <class Use>
void ForEachField(const ScriptItem& item, Use use) {
  if (item.record == nullptr) return;
  const auto& fields = kFieldsByShape[static_cast<std::size_t>(item.record->shape)];
  if (fields.empty()) return;
  const std::size_t last = fields.size() - 1;
  const bool ends_in_list = fields[last].kind == language::FieldKind::kList;
  for (std::size_t i = 0; item.first_field + i < item.parts.size(); ++i) {
    if (i > last && !ends_in_list) return;
    use(item.parts[item.first_field + i], item.record->roles[std::min(i, last)]);
  }
}

inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace rux::rules

#endif  // RULES_SCRIPT_ITEM_H_
