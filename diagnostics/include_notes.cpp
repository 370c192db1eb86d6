#include "diagnostics/include_notes.h"

#include <cstddef>
#include <string>
#include <utility>

#include "sources/script_path.h"
#include "sources/sub_strings.h"
#include "sources/why_not_opened.h"

namespace rux::diagnostics {
namespace {

Note ReasonOf(const Diagnostic& warning, Locator& locator) {
  const sources::SourceFile* file = locator.FileOf(warning);
  const std::string& includer = file != nullptr ? file->library_path() : locator.script();
  const std::string path = sources::ToOpenablePath(
      sources::FolderOf(includer) + std::string(sources::FirstSubString(*FirstMentioned(warning))));
  const bool closes_loop = file != nullptr && locator.sources().ClosesLoop(*file, warning.line);
  return {closes_loop ? path + " is open already: the INCLUDEs form a loop"
                      : "cannot read " + path + ": " + sources::WhyNotOpened(path),
          {}};
}

}  // namespace

void AddNotesOnIncludes(Locator& locator, std::vector<Diagnostic>& diagnostics) {
  std::size_t missing = 0;
  for (Diagnostic& diagnostic : diagnostics) {
    if (diagnostic.id != MessageId::kMissingInclude) continue;
    ++missing;
    diagnostic.notes.push_back(ReasonOf(diagnostic, locator));
  }
  if (missing == 0 || Count(diagnostics, Severity::kError) == 0) return;
  Diagnostic& note = diagnostics.emplace_back();
  note.id = MessageId::kUnreadIncludes;
  note.severity = Severity::kNote;
  note.text = missing == 1 ? "1 INCLUDE could not be read; errors above may follow from it"
                           : std::to_string(missing) +
                                 " INCLUDEs could not be read; errors above may follow from them";
}

}  // namespace rux::diagnostics
