#include "tool/diagnostics/include_notes.h"

#include <cstddef>
#include <string>
#include <utility>

#include "tool/compile/script_path.h"
#include "tool/compile/sub_strings.h"
#include "tool/compile/why_not_opened.h"

namespace rux {
namespace {

Diagnostic Note(std::string text) {
  Diagnostic note;
  note.severity = Severity::kNote;
  note.text = std::move(text);
  return note;
}

Diagnostic ReasonOf(const Diagnostic& warning, Locator& locator) {
  const SourceFile* file = locator.FileOf(warning);
  const std::string& includer = file != nullptr ? file->library_path() : locator.script();
  const std::string path =
      ToOpenablePath(FolderOf(includer) + std::string(FirstSubString(*warning.missing_include)));
  const bool closes_loop = file != nullptr && locator.sources().ClosesLoop(*file, warning.line);
  Diagnostic note = Note(closes_loop ? path + " is open already: the INCLUDEs form a loop"
                                     : "cannot read " + path + ": " + WhyNotOpened(path));
  note.path = warning.path;
  note.line = warning.line;
  return note;
}

}  // namespace

void AddNotesOnIncludes(Locator& locator, std::vector<Diagnostic>& diagnostics) {
  std::vector<Diagnostic> with_notes;
  std::size_t missing = 0;
  for (Diagnostic& diagnostic : diagnostics) {
    const Diagnostic& told = with_notes.emplace_back(std::move(diagnostic));
    if (!told.missing_include) continue;
    ++missing;
    with_notes.push_back(ReasonOf(told, locator));
  }
  diagnostics = std::move(with_notes);
  if (missing == 0 || Count(diagnostics, Severity::kError) == 0) return;
  diagnostics.push_back(
      Note(missing == 1 ? "1 INCLUDE could not be read; errors above may follow from it"
                        : std::to_string(missing) +
                              " INCLUDEs could not be read; errors above may follow from them"));
}

}  // namespace rux
