// What is remarkable about a thing, in a word or two after its name.
#ifndef PAGE_MARKS_H_
#define PAGE_MARKS_H_

#include <string>

#include "page/contents.h"
#include "page/html.h"

namespace rux::page {

// "new" or "changed" since the other machine, and "2 findings".
void WriteMarks(const Contents& contents, Thing thing, Html& out);

// Each finding of a thing, and each change.
void WriteFindingsOf(const Contents& contents, Thing thing, Html& out);
void WriteChangesOf(const Contents& contents, Thing thing, Html& out);

// What several findings have in common: severity and rule.
void WriteRule(const diagnostics::Diagnostic& finding, Html& out);
// The rest of such a finding, below that and after its section.
void WriteShortFinding(const Contents& contents, const diagnostics::Diagnostic& finding, Html& out);
// One of them, without the thing that it is about.
void WriteFinding(const Contents& contents, const diagnostics::Diagnostic& finding, Html& out);
void WriteChange(const diff::Change& change, Html& out);

}  // namespace rux::page

#endif  // PAGE_MARKS_H_
