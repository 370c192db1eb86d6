// Which entries the sections of each kind are made of.
#ifndef COMPILED_SECTION_SCHEMA_H_
#define COMPILED_SECTION_SCHEMA_H_

#include <cstdint>
#include <vector>

#include "compiled/keywords.h"

namespace rux::compiled {

// Bits of the notation of an entry.
inline constexpr std::uint32_t kRequired = 1;
inline constexpr std::uint32_t kFreeName = 8;

struct SchemaKey {
  SourceKey identifier;
  std::uint32_t notation;
};

// Where the names of entries differ from each other.
enum class NameScope { kNone, kSection, kKind };

struct SectionSchema {
  std::uint32_t kind;
  const char* keyword;
  std::uint32_t notation;  // of the section
  // A debug meta file has an entry for each of these, given or not, in this order and before all
  // others; a meta file has those that are given.
  std::vector<SchemaKey> keys;
  std::vector<SchemaKey> more;  // what else there may be, any number of each
  bool is_single = false;       // one section of the kind at most
  NameScope names = NameScope::kSection;
};

// By the number of the kind; null when there is none.
const SectionSchema* FindSchema(std::uint32_t kind);

}  // namespace rux::compiled

#endif  // COMPILED_SECTION_SCHEMA_H_
