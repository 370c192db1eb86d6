#include "diagnostics/diagnostic.h"

#include <string>
#include <variant>

#include "support/safe_text.h"
#include "support/text_file.h"

namespace rux::diagnostics {

Location LocationIn(const support::TextFile& file, support::ByteRange range) {
  return {file.path(), file.LineAt(range.begin), &file, range};
}

const std::string* FirstMentioned(const Diagnostic& diagnostic) {
  for (const Argument& argument : diagnostic.arguments) {
    if (const auto* text = std::get_if<std::string>(&argument)) return text;
  }
  return nullptr;
}

std::string WholeText(const Diagnostic& diagnostic) {
  if (!diagnostic.section) return diagnostic.text;
  const std::string entry = diagnostic.entry ? ' ' + support::Shortened(*diagnostic.entry) : "";
  return '[' + support::Shortened(*diagnostic.section) + ']' + entry + ": " + diagnostic.text;
}

std::string Label(const Diagnostic& diagnostic) {
  return std::string(diagnostic.is_raised ? " [-W error=" : " [") +
         std::string(diagnostic.row->id) + ']';
}

std::string SuggestionText(const Diagnostic& diagnostic) {
  return "did you mean " + support::Shortened(*diagnostic.suggestion) + '?';
}

}  // namespace rux::diagnostics
