// Answering a path with what a script said there.
#ifndef INSPECT_DEBUG_FIND_H_
#define INSPECT_DEBUG_FIND_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "compiled/debug_meta.h"
#include "inspect/path.h"

namespace rux::inspect {

// The kind of path that leads to a defined word.
inline constexpr char kWordKind[] = "WORD";

// The keyword of the kind that a path begins with, as the language spells it, or kWordKind. Throws
// a Failure that names those near it.
std::string ExpectKeyword(const std::string& keyword);

// A defined word's number, or that of a text which is one; none for any other text.
std::optional<std::uint32_t> NumberOf(const compiled::DebugMeta& meta, const std::string& text);

// What a path may call the section: its NAME, and the number of its ID. None when it was not given,
// or is not a number.
std::optional<std::string> NameOf(const compiled::DebugSection& section);
std::optional<std::uint32_t> IdOf(const compiled::DebugMeta& meta,
                                  const compiled::DebugSection& section);

struct DebugFound {
  const compiled::DebugSection* section;
  const compiled::DebugEntry* entry;  // null: the section itself
};

// KIND/SECTION[/ENTRY] as for meta files (meta_view.h), for every kind of the script language, and
// WORD/NAME for a defined word.
//
// The result has the section, or all of its entries with that key, in file order; for a word, all
// entries that define it. It is never empty and points into `meta`. Throws a Failure of findings
// that says what does not exist and which names are near it, and one of wrong usage for a path of
// another form.
std::vector<DebugFound> Find(const compiled::DebugMeta& meta, const std::vector<PathStep>& path);

// All sections of a kind, or for kWordKind all entries that define words, in file order. Never
// empty; throws a Failure of findings.
std::vector<DebugFound> FindKind(const compiled::DebugMeta& meta, const std::string& keyword);

}  // namespace rux::inspect

#endif  // INSPECT_DEBUG_FIND_H_
