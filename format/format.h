// One way of writing a script that means the same.
//
// What is changed is only how lines look: blanks, and the case of hexadecimal digits. Each rule is
// in docs/formatting.md.
#ifndef FORMAT_FORMAT_H_
#define FORMAT_FORMAT_H_

#include <cstdint>
#include <optional>
#include <string>

namespace rux::format {

struct Options {
  // Adds and removes empty lines. Otherwise every line keeps its number.
  bool blank_lines = false;
};

// Why a text stays as it is.
struct Refusal {
  std::uint32_t line;  // from 1
  std::string reason;  // a phrase
};

// The reason where the check below fails, which a text should never do.
inline constexpr char kReadDifferently[] = "the formatted text would be read differently";

struct Formatted {
  std::string text;                // as it was after a refusal
  std::optional<Refusal> refusal;  // the text has errors
};

// The formatted text has, in the same order, the same sections, keys, delivered values (but for the
// case of digits) and comments as the text, and without blank_lines on the same lines: that is
// checked. Formatted again, it does not change.
Formatted Format(const std::string& text, const Options& options = {});

}  // namespace rux::format

#endif  // FORMAT_FORMAT_H_
