// The lines of a script by what they are about.
#ifndef IMPORTS_SCRIPT_LINES_H_
#define IMPORTS_SCRIPT_LINES_H_

#include <string>
#include <string_view>
#include <vector>

namespace rux::imports {

// A line with those that backslashes join to it.
struct ScriptLine {
  std::string_view text;  // with its end
  std::string meaning;    // without its end; runs of blanks are one blank each
  std::string key;        // no other line of the section has it

  bool is_blank() const { return meaning.empty(); }
  bool operator==(const ScriptLine& other) const { return meaning == other.meaning; }
};

// A header with the comments above it, and the lines up to the next one. What comes before the
// first header is one without.
struct ScriptPart {
  std::string key;  // no other part of the text has it
  std::vector<ScriptLine> lines;

  bool operator==(const ScriptPart& other) const;  // but for blank lines
};

// The text must outlive the parts. It need not be a script: other texts are one part.
std::vector<ScriptPart> PartsOf(std::string_view text);

}  // namespace rux::imports

#endif  // IMPORTS_SCRIPT_LINES_H_
