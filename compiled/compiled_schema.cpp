#include "compiled/compiled_schema.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "compiled/index_class.h"
#include "ruxcomp/identifiers.h"

namespace rux::compiled {
namespace {

// Entries whose values are those of most entries of their class, except in some kinds.
Content ContentOf(std::uint32_t section, SourceKey key) {
  if (PayloadClassOf(key) == PayloadClass::kValue) return Content::kTypedValue;
  if (PayloadClassOf(key) == PayloadClass::kList) return Content::kNumbers;
  if (IsNumeric(key)) return Content::kNumber;
  if (key == kKeyPARENT) return Content::kParent;
  if (key == kKeyMODEL) return Content::kAnyText;
  if (key != kKeyNAME) return Content::kText;
  if (section == RUX_SECT_GROUP) return Content::kGroupName;
  return section == RUX_SECT_ACTION ? Content::kActionName : Content::kName;
}

// The identifier of an entry that the language has a keyword for: some of these, too, have the
// index of a name.
std::uint32_t CompiledIdentifier(const EntryForm& form) {
  if (form.compiled != 0) return form.compiled;
  const std::string_view name = std::string_view(form.keyword).substr(form.prefix);
  const auto* const found =
      std::find(std::begin(kFixedValueNames), std::end(kFixedValueNames), name);
  return form.name_class + static_cast<std::uint32_t>(found - std::begin(kFixedValueNames));
}

std::vector<CompiledSchema> Schemas() {
  std::vector<CompiledSchema> schemas;
  for (std::uint32_t section = RUX_SECT_MORVRUX; section <= RUX_SECT_REPEATER; ++section) {
    CompiledSchema schema{FindSchema(section - kCompiledSection), {}, {}};
    for (const auto& [key, notation] : schema.source->keys) {
      const EntryForm& form = *FindEntryForm(key);
      schema.keys.push_back({CompiledIdentifier(form), form.keyword, (notation & kRequired) != 0,
                             ContentOf(section, key)});
    }
    for (const auto& [key, notation] : schema.source->more) {
      const EntryForm& form = *FindEntryForm(key);
      if (form.name_class != 0) schema.name_classes.push_back(form.name_class);
    }
    schemas.push_back(schema);
  }
  return schemas;
}

}  // namespace

const CompiledSchema& SchemaOf(std::uint32_t section_identifier) {
  static const std::vector<CompiledSchema> schemas = Schemas();
  return schemas[section_identifier - RUX_SECT_MORVRUX];
}

Content ContentOfNamed(std::uint32_t identifier) {
  switch (ClassOfIndex(identifier)) {
    case RUX_CLASS_Value:
    case RUX_CLASS_Global:
      return Content::kTypedValue;
    case RUX_CLASS_Repeater:
      return Content::kRepetition;
    default:
      return Content::kText;
  }
}

}  // namespace rux::compiled
