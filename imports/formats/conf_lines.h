// sensors.conf, split into statements and tokens.
#ifndef IMPORTS_FORMATS_CONF_LINES_H_
#define IMPORTS_FORMATS_CONF_LINES_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace rux::imports {

struct ConfToken {
  enum class Kind : std::uint8_t { kName, kNumber, kSign };

  Kind kind;
  std::string_view source;  // as the file has it
  std::string name;         // what a name is; without quotes
};

// A statement: a keyword, and what is after it in its line, or also in the next one if a backslash
// ends the line. Cost: the bytes of the text.
struct ConfLine {
  std::uint32_t number;  // of its first line, from 1
  std::string_view keyword;
  std::vector<ConfToken> tokens;

  bool Has(std::size_t token, ConfToken::Kind kind) const;
  bool HasSign(std::size_t token, char sign) const;
  // The text of the tokens from `begin` to before `end`.
  std::string_view TextOf(std::size_t begin, std::size_t end) const;
  // Throws a Failure: "sensors.conf:12: expected a name, found 12".
  [[noreturn]] void RefuseAt(const std::string& path, std::size_t token,
                             std::string_view expected) const;
};

// The text must outlive the lines. Throws a Failure that names the line of what is not a token.
std::vector<ConfLine> ReadConfLines(const std::string& path, std::string_view text);

// Throws a Failure: "sensors.conf:12: unexpected backslash".
[[noreturn]] void RefuseConf(const std::string& path, std::uint32_t line, const std::string& what);

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_CONF_LINES_H_
