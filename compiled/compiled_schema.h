// Which entries the sections of a meta file are made of, and what their values are.
#ifndef COMPILED_COMPILED_SCHEMA_H_
#define COMPILED_COMPILED_SCHEMA_H_

#include <cstdint>
#include <vector>

#include "compiled/section_schema.h"

namespace rux::compiled {

// The values of an entry.
enum class Content {
  kNumber,      // one number
  kNumbers,     // any number of numbers
  kText,        // one text that is not empty
  kAnyText,     // one text
  kName,        // one text that no other section of the kind has
  kGroupName,   // one group, the section's own
  kActionName,  // one action, the section's own
  kParent,      // one group
  kTypedValue,  // a type and what belongs to it
  kRepetition,  // a count, an action and its arguments, or nothing at all
};

struct CompiledKey {
  std::uint32_t identifier;
  const char* keyword;
  bool is_required;
  Content content;
};

struct CompiledSchema {
  const SectionSchema* source;
  std::vector<CompiledKey> keys;            // in this order, before all others
  std::vector<std::uint32_t> name_classes;  // of the other entries
};

// The identifier must be that of a compiled kind.
const CompiledSchema& SchemaOf(std::uint32_t section_identifier);

// The content of an entry that has the index of its name for an identifier.
Content ContentOfNamed(std::uint32_t identifier);

// The names that every meta file has as its first values, and the first group: the root of all.
inline constexpr const char* kFixedValueNames[] = {"IPMI", "", "INIT", "DEINIT", "ENTRY", "EXIT"};
inline constexpr const char* kRootGroup = "0";

}  // namespace rux::compiled

#endif  // COMPILED_COMPILED_SCHEMA_H_
