// A problem of a script, as it is told to people and to other programs.
#ifndef TOOL_DIAGNOSTICS_DIAGNOSTIC_H_
#define TOOL_DIAGNOSTICS_DIAGNOSTIC_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tool/output.h"

namespace rux {

enum class Severity { kNote, kWarning, kError };

// What tells the place of a diagnostic.
enum class Anchor {
  kNone,            // it is about the script as a whole
  kPlace,           // file and line
  kMissingEntry,    // it is about an entry that stands nowhere: section and entry
  kUnknownSection,  // the order of the sections that the library does not know
};

// A source line and what is wrong in it. The text belongs to the sources that it was found in.
struct Excerpt {
  std::uint32_t line = 0;  // of joined lines, the one that holds the offending text
  std::string_view text;   // as it stands in the file
  std::size_t begin = 0;   // the offending bytes of `text`
  std::size_t length = 0;
};

struct Diagnostic {
  Severity severity = Severity::kError;
  bool only_verbose = false;

  // What was said.
  Anchor anchor = Anchor::kNone;
  std::string file;        // the base name of the source file
  std::uint32_t line = 0;  // 0: none
  std::optional<std::string> section;
  std::optional<std::string> entry;
  std::string text;
  std::vector<Argument> arguments;             // what the text mentions
  std::optional<std::string> missing_include;  // the value of an INCLUDE item, when it is that

  // Where it stands, as far as it was found.
  std::string path;  // as it can be opened from here; empty: nothing of the script
  std::optional<Excerpt> excerpt;
};

// How many there are of a severity.
std::size_t Count(const std::vector<Diagnostic>& diagnostics, Severity severity);

}  // namespace rux

#endif  // TOOL_DIAGNOSTICS_DIAGNOSTIC_H_
