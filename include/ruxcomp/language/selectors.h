// The selectors of gcGetValueByID.
#ifndef RUXCOMP_LANGUAGE_SELECTORS_H_
#define RUXCOMP_LANGUAGE_SELECTORS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/values.h"

namespace ruxcomp::language {

enum Selector : std::uint32_t {
#define SELECTOR_CODE(name, code) SELECT_##name = (code),
#include "ruxcomp/language/selectors.def"
};

inline constexpr std::uint32_t kLastValue = 0xFFFFFFFF;     // of the entry
inline constexpr std::uint32_t kRepeaterType = 0xFFFFFFFF;  // no type: those have 24 bits

struct SelectorRow {
  const char* name;        // of the selector
  const char* part;        // the name of the part that it picks
  std::uint32_t type;      // the value type that the entry must have, or kRepeaterType
  std::uint32_t least;     // the entry must have this many values at least ...
  std::uint32_t most;      // ... and this many at most
  std::uint32_t selector;  // the code
  std::uint32_t first;     // see selectors.def
  std::uint32_t last;

  constexpr bool Fits(std::uint32_t value_type, std::size_t count) const {
    return type == value_type && count >= least && count <= most;
  }
  // Whether selector + i picks the i-th item of a group.
  constexpr bool IsGroup() const { return last > first; }
};

// The name of the part that a selector picks first; `before` values of the compiled entry precede
// the fields. Null when there is no such field.
constexpr const char* PartPicked(Shape shape, std::uint32_t first, std::uint32_t last,
                                 std::size_t before) {
  const Rows<Field> fields = FieldsOfShape(shape);
  const std::size_t picked = first + std::size_t{last > first ? 1u : 0u};
  return picked - before < fields.size() ? fields[picked - before].part : nullptr;
}

// The first value of a compiled entry is the type.
constexpr SelectorRow MakeSelector(const ValueType& type, const char* name, Selector code,
                                   std::uint32_t first, std::uint32_t last) {
  return {name,
          PartPicked(type.shape, first, last, 1),
          type.code,
          type.least,
          type.Has(kSelectsSurplus) ? kAnyNumber : type.most,
          code,
          first,
          last};
}

// A repeater has its texts at least, and any number of arguments.
constexpr SelectorRow MakeRepeaterSelector(const char* name, Selector code, std::uint32_t first,
                                           std::uint32_t last) {
  const auto texts = static_cast<std::uint32_t>(FieldsOfShape(Shape::kRepeater).size() - 1);
  const char* part = PartPicked(Shape::kRepeater, first, last, 0);
  return {name, part, kRepeaterType, texts, kAnyNumber, code, first, last};
}

inline constexpr SelectorRow kSelectorRows[] = {
#define SELECTOR(type, name, first, last) \
  MakeSelector(FindValueType(type), #name, SELECT_##name, first, last),
#define COMPARISON_SELECTOR(name, first, last) \
  MakeSelector(kComparison, #name, SELECT_##name, first, last),
#define REPEATER_SELECTOR(name, first, last) \
  MakeRepeaterSelector(#name, SELECT_##name, first, last),
#include "ruxcomp/language/selectors.def"
};
static_assert(!HasRow(kSelectorRows, [](const SelectorRow& row) { return row.part == nullptr; }),
              "every selector picks a field of its type");

constexpr bool HasSelectors(const ValueType& type) {
  std::uint32_t parts = 1;  // the type's own
  for (const Field& field : type.fields) {
    if (parts++ == type.most) break;
    const auto picks = [&](const SelectorRow& row) {
      return row.type == type.code && row.least == type.least &&
             std::string_view(row.part) == field.part;
    };
    if (!HasRow(kSelectorRows, picks)) return false;
  }
  return true;
}
constexpr bool HaveSelectors() {
  for (const ValueType& type : kValueTypes) {
    if (!HasSelectors(type)) return false;
  }
  return HasSelectors(kComparison);
}
static_assert(HaveSelectors(), "a row of selectors.def picks every part of a value");

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_SELECTORS_H_
