// What the lines around a finding show: slips that the message itself cannot name.
#ifndef ADVICE_LINE_HINTS_H_
#define ADVICE_LINE_HINTS_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "diagnostics/diagnostic.h"
#include "sources/source_set.h"

namespace rux::advice {

// Adds a note when an item lacks its '=', has a comment of another language, goes on where no
// backslash joins the lines, or has a part with a comma missing or with an invisible character.
// Answers whether it did.
bool AddLineHint(const sources::SourceSet& sources, diagnostics::Diagnostic& diagnostic);

// The number of the line before an item that was to go on in it, when no backslash joins the two; 0
// for any other item.
std::uint32_t LineCutBefore(const sources::SourceFile& file, const ruxcomp::reader::Item& item);

}  // namespace rux::advice

#endif  // ADVICE_LINE_HINTS_H_
