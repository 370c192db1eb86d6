// A problem of a script, as it is reported to users and to other programs.
#ifndef DIAGNOSTICS_DIAGNOSTIC_H_
#define DIAGNOSTICS_DIAGNOSTIC_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "findings/message_row.h"
#include "findings/origin.h"
#include "support/text_file.h"
#include "support/utf8.h"

namespace rux::diagnostics {

using ruxcomp::findings::MessageRow;
using ruxcomp::findings::Severity;

// A source line and what is meant in it. The text belongs to the file that it was found in.
struct Excerpt {
  std::uint32_t line = 0;  // of joined lines, the one that holds the meant text
  std::string_view text;   // as it is in the file
  std::size_t begin = 0;   // the meant bytes of `text`
  std::size_t length = 0;

  // The columns of the meant text, from 1, and the one after it: in characters of UTF-8, with a
  // tab as one of them.
  std::size_t first_column = 1;
  std::size_t end_column = 1;

  std::string_view meant() const { return text.substr(begin, length); }
};

// An exact place has a file, which must outlive it, and bytes of that file. Of others it is known
// as much as is filled in.
struct Location {
  std::string path;              // as it can be opened from here; empty: nothing of the script
  std::uint32_t first_line = 0;  // 0: none
  const support::TextFile* file = nullptr;
  support::ByteRange range = {};
  std::optional<Excerpt> excerpt = {};  // of what is shown (Excerpts)

  std::uint32_t line() const { return excerpt ? excerpt->line : first_line; }
};

Location LocationIn(const support::TextFile& file, support::ByteRange range);

// What helps to understand a diagnostic.
struct Note {
  std::string text;
  Location at;  // without a path: that of the diagnostic
};

using Argument = std::variant<std::string, std::uint32_t>;

// What to put in the place of bytes of a file.
struct Fix {
  support::ByteRange range;
  std::string text;
  // Safe to apply unasked: what is compiled stays as it is, or this is the only way to make the
  // script compile. Other fixes are offered.
  bool is_safe = false;
};

struct Diagnostic {
  const MessageRow* row = nullptr;
  Severity severity = Severity::kError;

  std::optional<std::string> section;
  std::optional<std::string> entry;
  std::string text;
  std::string library_text;         // what the library reports to hosts; empty for other messages
  std::vector<Argument> arguments;  // what the text mentions
  std::string test = {};            // the name of the test that failed; empty: it has none

  Location at;
  // What a finding of a run is about, for those who know its scripts.
  ruxcomp::findings::Origin origin;
  ruxcomp::findings::Origin other;
  std::vector<Note> included_from;  // the INCLUDE items that lead there, the nearest first

  std::optional<std::string> suggestion;  // what was probably meant
  std::optional<Fix> fix;                 // in the file of `at`; beside a suggestion
  std::vector<Note> notes;
};

// The first text that the diagnostic mentions; null when there is none.
const std::string* FirstMentioned(const Diagnostic& diagnostic);

// "[SENSOR] NAME: text", with long names shortened.
std::string WholeText(const Diagnostic& diagnostic);

// " [undefined-word]"
std::string Label(const Diagnostic& diagnostic);

// "did you mean ...?"
std::string SuggestionText(const Diagnostic& diagnostic);

// The fix; without one, the suggestion where it is known what it would replace. None without an
// excerpt, and none for bytes of several lines.
std::optional<Fix> FixOf(const Diagnostic& diagnostic);

// "replace hto with hot", "insert ]" or "remove ..." for a fix of those bytes.
std::string FixText(const Fix& fix, std::string_view replaced);

// A line may be long and be the place of many diagnostics: its characters are counted once.
class Excerpts {
 public:
  // Fills in the excerpts of the diagnostics and their notes, where places are exact.
  void AddTo(std::vector<Diagnostic>& diagnostics);

 private:
  void AddTo(Location& location);
  const support::CharacterCounts& CountsOf(const Location& location, const Excerpt& excerpt);

  using Line = std::pair<const support::TextFile*, std::uint32_t>;
  Line last_ = {nullptr, 0};
  std::unique_ptr<support::CharacterCounts> last_counts_;
  std::map<Line, support::CharacterCounts> long_lines_;
};

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_DIAGNOSTIC_H_
