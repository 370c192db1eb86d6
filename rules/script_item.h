// An item of a script, as the rules on traps see it.
#ifndef RULES_SCRIPT_ITEM_H_
#define RULES_SCRIPT_ITEM_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "compiled/section_schema.h"
#include "compiled/value_shape.h"
#include "reader/value.h"
#include "sources/source_set.h"

namespace rux::rules {

// The parts of a value into a list that is used again; what it held is dropped.
inline void PartsInto(const reader::Item& item, std::vector<std::string_view>& parts) {
  parts.clear();
  reader::ForEachPart(item, [&](std::string_view part) { parts.push_back(part); });
}

struct ScriptItem {
  const sources::SourceFile* file;
  const reader::Section* section;
  const reader::Item* item;
  std::uint32_t kind;                          // a KindNumber
  std::uint32_t key;                           // a SourceKey; 0: the section does not take it
  const std::vector<std::string_view>& parts;  // of the value

  // Of items that hold a typed value: the type and what the parts behind it are. Null for others,
  // and when the type is unknown.
  const compiled::ValueShape* shape = nullptr;
  std::uint32_t value_type = 0;

  std::string_view name() const { return item->key; }
  std::string_view first() const { return parts.empty() ? std::string_view() : parts.front(); }
};

// An item that is told of when more of the script has been seen: all but its parts.
struct SeenItem {
  explicit SeenItem(const ScriptItem& seen)
      : file(seen.file), section(seen.section), item(seen.item), kind(seen.kind), key(seen.key) {}

  ScriptItem Shown() const;

  const sources::SourceFile* file;
  const reader::Section* section;
  const reader::Item* item;
  std::uint32_t kind;
  std::uint32_t key;
};

// Calls use(part, role) for the parts behind the type.
template <class Use>
void ForEachOperand(const ScriptItem& item, Use use) {
  if (item.shape == nullptr) return;
  const compiled::ValueShape& shape = *item.shape;
  for (std::size_t i = 1; i < item.parts.size(); ++i) {
    const bool is_in_list = i > shape.texts.size();
    if (is_in_list && shape.list.name == nullptr) return;
    use(item.parts[i], is_in_list ? shape.list.role : shape.texts[i - 1].role);
  }
}

// What a kind of section takes.
struct KindKeys {
  const compiled::SectionSchema* schema;
  std::vector<std::pair<std::string_view, std::uint32_t>> keys;  // those with names of the language
};

// Those of the sections of that name; null for unknown ones.
const KindKeys* FindKeysOf(std::string_view section);

// What the index-th item of such a section is, by its key: a SourceKey, 0 when it is not taken.
std::uint32_t KeyOf(const KindKeys& kind, std::string_view key, std::uint32_t index);

// Whether a text is long enough to have the prefix and something behind it.
inline bool HasPrefix(std::string_view text, std::string_view prefix) {
  return text.size() > prefix.size() && text.substr(0, prefix.size()) == prefix;
}

}  // namespace rux::rules

#endif  // RULES_SCRIPT_ITEM_H_
