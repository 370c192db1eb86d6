// What keys, types and numbers are, for people: in Markdown where a name has `...` around it.
#ifndef ASSISTANCE_WORDING_H_
#define ASSISTANCE_WORDING_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "assistance/place.h"
#include "index/index.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"

namespace rux::assistance {

// A text of a script between backticks, and lines of one in a block.
std::string Code(std::string_view text);
std::string CodeBlock(std::string_view lines);

// "a number or a word", by what the text of an entry becomes.
std::string PayloadText(const language::EntryRow& row);
// "required, a number or a word; the `ID` of a `[PELMGROUP]`, or 0".
std::string KeyText(const language::SectionKind& kind, std::uint32_t entry,
                    language::Notation notation);

// "operand", "number", "action"; by the row of a list, "operands".
std::string RoleText(language::Role role, bool is_list);
// "base address (operand)"
std::string PartText(const language::ValueType& type, std::size_t field);

// "[SENSOR] INLET", or its key for what is an entry.
std::string TitleOf(const index::Index& index, const index::Definition& definition);
// What the section is called: its NAME, or nothing.
std::string_view NameOf(const index::Index& index, Id section);

}  // namespace rux::assistance

#endif  // ASSISTANCE_WORDING_H_
