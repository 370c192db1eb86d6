// What keys and operands begin with.
#ifndef RUXCOMP_LANGUAGE_PREFIXES_H_
#define RUXCOMP_LANGUAGE_PREFIXES_H_

#include <string_view>

namespace ruxcomp::language {

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

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_PREFIXES_H_
