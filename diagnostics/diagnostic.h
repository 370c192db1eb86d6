// A problem of a script, as it is told to people and to other programs.
#ifndef DIAGNOSTICS_DIAGNOSTIC_H_
#define DIAGNOSTICS_DIAGNOSTIC_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/messages/messages.h"
#include "diagnostics/output.h"
#include "diagnostics/severity.h"

namespace rux::sources {
class SourceFile;
}

namespace rux::diagnostics {

// What tells the place of a diagnostic.
enum class Anchor {
  kNone,            // it is about the script as a whole
  kPlace,           // file and line
  kMissingEntry,    // it is about an entry that stands nowhere: section and entry
  kUnknownSection,  // the order of the sections that the library does not know
};

// A source line and what is meant in it. The text belongs to the sources that it was found in.
struct Excerpt {
  std::uint32_t line = 0;  // of joined lines, the one that holds the meant text
  std::string_view text;   // as it stands in the file
  std::size_t begin = 0;   // the meant bytes of `text`
  std::size_t length = 0;

  // The columns of the meant text, from 1, and the one behind it: in characters of UTF-8, with a
  // tab as one of them.
  std::size_t first_column = 1;
  std::size_t end_column = 1;

  std::string_view meant() const { return text.substr(begin, length); }
};

// Whoever knows the place from the start sets the source, the line and, of an item, what in its
// value is meant; the locator fills in the rest.
struct Location {
  std::string path;              // as it can be opened from here; empty: nothing of the script
  std::uint32_t first_line = 0;  // 0: none
  std::optional<Excerpt> excerpt;
  const sources::SourceFile* source = nullptr;
  std::optional<std::size_t> value_at;  // where in the value the meant part begins

  std::uint32_t line() const { return excerpt ? excerpt->line : first_line; }
};

// What helps to understand a diagnostic.
struct Note {
  std::string text;
  Location at;  // without a path: that of the diagnostic
};

struct Diagnostic {
  MessageId id = MessageId::kOtherMessage;
  Severity severity = Severity::kError;
  bool is_raised = false;  // a warning that somebody wants to be an error
  bool only_verbose = false;

  // What was said.
  Anchor anchor = Anchor::kNone;
  std::string file;        // the base name of the source file
  std::uint32_t line = 0;  // 0: none
  std::optional<std::string> section;
  std::optional<std::string> entry;
  std::string text;
  std::vector<Argument> arguments;  // what the text mentions
  bool expects_word = false;        // the first of them should have been a defined word

  // Where it stands, as far as it was found.
  Location at;
  std::vector<Note> included_from;  // the INCLUDE items that lead there, the nearest first

  std::optional<std::string> suggestion;  // what was probably meant
  std::vector<Note> notes;
};

// The first text that the diagnostic mentions; null when there is none.
const std::string* FirstMentioned(const Diagnostic& diagnostic);

// "[SENSOR] NAME: text", with long names shortened.
std::string WholeText(const Diagnostic& diagnostic);

// " [undefined-word]", or how the warning came to be an error: " [-W error=surplus-values]".
std::string Label(const Diagnostic& diagnostic);

// "did you mean ...?"
std::string SuggestionText(const Diagnostic& diagnostic);

// How many there are of a severity.
std::size_t Count(const std::vector<Diagnostic>& diagnostics, Severity severity);

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_DIAGNOSTIC_H_
