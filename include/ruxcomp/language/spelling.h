// What the texts of a script look like: prefixes of keys and operands, the words of a bus access,
// ranges of cells.
#ifndef RUXCOMP_LANGUAGE_SPELLING_H_
#define RUXCOMP_LANGUAGE_SPELLING_H_

#include <cstddef>
#include <string_view>

namespace ruxcomp::language {

// Each views a whole literal: entries.def has them as keywords, which end in a zero.
inline constexpr std::string_view kNoPrefix;
inline constexpr std::string_view kPropertyPrefix = "P_";
inline constexpr std::string_view kGlobalPrefix = "G_";
inline constexpr std::string_view kValuePrefix = "VALUE_";
inline constexpr std::string_view kPlainValue = "VALUE";  // the value without a name
inline constexpr std::string_view kArgumentPrefix = "ARG";

constexpr bool BeginsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

// Whether `text` begins with `prefix` and continues after it: "G_X" has the prefix "G_", "G_" does
// not.
constexpr bool HasPrefix(std::string_view text, std::string_view prefix) {
  return text.size() > prefix.size() && BeginsWith(text, prefix);
}

// The bus type and the base address that an access to an SMBUS device gives.
inline constexpr std::string_view kSmbus = "BUSTYPE_SMBUS";
inline constexpr std::string_view kSmbusBaseAddress = "0x00";

// The bus type whose accesses have the base address 0: a simple I/O port is its own address.
inline constexpr std::string_view kSimpleIoPort = "BUSTYPE_SIMPLEIOPORT";

// The numbers of the first and the last cell, as written; of one cell, twice the same.
struct CellRange {
  std::string_view low;
  std::string_view high;
};

constexpr CellRange SplitCellRange(std::string_view key) {
  const std::size_t dot = key.find('.');
  return {key.substr(0, dot), dot == std::string_view::npos ? key : key.substr(dot + 1)};
}

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_SPELLING_H_
