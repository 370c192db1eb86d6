// The classes of changes.
#ifndef DIFF_CLASSES_H_
#define DIFF_CLASSES_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "findings/message_row.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"

namespace rux::diff {

namespace language = ruxcomp::language;

// What a change breaks. The first three are nested: what breaks hosts that look up by ID also
// breaks those that look up by NAME, and those that use ordinals break with each of the three.
enum class Category : std::uint8_t {
  kPosition,   // hosts that use ordinals
  kName,       // hosts that look up by name
  kId,         // hosts that look up by ID
  kLimits,     // nothing; the machine reports other readings
  kBehaviour,  // nothing; the machine does something else
  kOther,      // nothing
};
inline constexpr std::string_view kCategoryWords[] = {"position", "name",      "id",
                                                      "limits",   "behaviour", "other"};
inline constexpr std::size_t kCategoryCount = sizeof kCategoryWords / sizeof *kCategoryWords;
constexpr std::string_view WordOf(Category category) {
  return kCategoryWords[static_cast<std::size_t>(category)];
}
// Whether a change of the category is one of what the word means, nested ones counted in.
constexpr bool IsWithin(Category category, Category outer) {
  return category == outer || (category > outer && category <= Category::kId);
}

enum class ClassId : std::uint8_t {
#define CHANGE(name, id, category, mirror, summary, explanation) k##name,
#include "diff/classes.def"
};

#define CHANGE(name, id, category, mirror, summary, explanation) \
  inline constexpr ruxcomp::findings::MessageRow k##name = {     \
      "", id, ruxcomp::findings::Level::kNote, summary, explanation, "", ""};
#include "diff/classes.def"

// For rux explain.
inline constexpr const ruxcomp::findings::MessageRow* kRows[] = {
#define CHANGE(name, id, category, mirror, summary, explanation) &k##name,
#include "diff/classes.def"
};

struct ClassRow {
  ClassId id;
  const ruxcomp::findings::MessageRow* message;
  Category category;
  ClassId mirror;
};
inline constexpr ClassRow kClasses[] = {
#define CHANGE(name, id, category, mirror, summary, explanation) \
  {ClassId::k##name, &k##name, Category::category, ClassId::k##mirror},
#include "diff/classes.def"
};
constexpr const ClassRow& RowOf(ClassId id) { return kClasses[static_cast<std::size_t>(id)]; }

constexpr bool AreMirrored() {
  for (const ClassRow& row : kClasses) {
    if (RowOf(row.mirror).mirror != row.id) return false;
  }
  return true;
}
static_assert(AreMirrored(), "the mirror of the mirror is the class itself");

// The class of that id; null when there is none.
constexpr const ClassRow* FindClass(std::string_view id) {
  return language::FindRow(kClasses, [&](const ClassRow& row) { return row.message->id == id; });
}

// The classes of an entry that is new, gone, or has another value.
struct EntryClasses {
  ClassId added;
  ClassId removed;
  ClassId changed;
};

// Of an entry with that identifier of the meta file, in a section of the kind.
EntryClasses ClassesOf(const language::SectionKind& kind, std::uint32_t identifier);

// Of a field of a value.
ClassId ClassOf(const language::Field& field, language::Role role);

}  // namespace rux::diff

#endif  // DIFF_CLASSES_H_
