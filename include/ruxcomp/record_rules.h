// How compiled records are read: what an entry offers as the ID or as a name of its section, and
// which of its values a selector picks. The queries and the read model (model.h) both use this.
#ifndef RUXCOMP_RECORD_RULES_H_
#define RUXCOMP_RECORD_RULES_H_

#include <cstddef>
#include <cstdint>
#include <optional>

#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/selectors.h"
#include "ruxcomp/language/symbols.h"

namespace ruxcomp {

using language::ClassOf;
using language::IsImmediate;
using language::OrdinalOf;

// Whether sections of the kind (a RUX_SECT_...) are found by the names of their entries.
constexpr bool HasNamedEntries(std::uint32_t kind) {
  const language::SectionKind* row = language::FindCompiledKind(kind);
  return row != nullptr && row->naming == language::Naming::kByKeys;
}

// The table index that an entry offers as the ID, or as a name, of a section of that kind; null
// when it offers none. `first_value` is null for an entry without values. All entries of a section
// may offer some.
constexpr const std::uint32_t* OfferedId(std::uint32_t identifier,
                                         const std::uint32_t* first_value) {
  return identifier == RUX_ENTRY_ID ? first_value : nullptr;
}
constexpr const std::uint32_t* OfferedName(std::uint32_t kind, const std::uint32_t& identifier,
                                           const std::uint32_t* first_value) {
  if (identifier == RUX_ENTRY_NAME && first_value != nullptr) return first_value;
  return HasNamedEntries(kind) ? &identifier : nullptr;
}

// Where the value is that a selector picks, or why there is none (`code` is not RUX_ERROR_OK).
struct Selection {
  RuxLastError code;
  std::size_t ordinal;
};

constexpr Selection SelectByType(std::uint32_t type, std::size_t count, std::uint32_t selector) {
  for (const language::SelectorRow& row : language::kSelectorRows) {
    if (!row.Fits(type, count) || selector < row.selector) continue;
    const std::size_t picked = std::size_t{row.first} + (selector - row.selector);
    if (picked <= row.last && picked < count) return {RUX_ERROR_OK, picked};
  }
  return {RUX_ERROR_NO_VALUE, 0};
}

// Among the `count` values of an entry. type() returns the number that the first of them stands
// for, or nothing if it stands for none.
template <class Type>
constexpr Selection Select(std::uint32_t identifier, std::size_t count, std::uint32_t selector,
                           Type type) {
  const std::uint32_t index_class = ClassOf(identifier);
  if (index_class == RUX_CLASS_Repeater)
    return SelectByType(language::kRepeaterType, count, selector);
  if (index_class != RUX_CLASS_Value && index_class != RUX_CLASS_Global) {
    return {RUX_ERROR_NOT_SELECTABLE, 0};
  }
  if (count == 0) return {RUX_ERROR_NO_VALUE, 0};
  const std::optional<std::uint32_t> number = type();
  if (!number) return {RUX_ERROR_UNRESOLVED, 0};
  if (selector == RUX_SELECT_TYPE) return {RUX_ERROR_OK, 0};
  return SelectByType(*number, count, selector);
}

}  // namespace ruxcomp

#endif  // RUXCOMP_RECORD_RULES_H_
