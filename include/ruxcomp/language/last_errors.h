// The last-error codes of the query functions.
#ifndef RUXCOMP_LANGUAGE_LAST_ERRORS_H_
#define RUXCOMP_LANGUAGE_LAST_ERRORS_H_

#include <cstdint>

namespace ruxcomp::language {

struct LastError {
  const char* name;
  std::uint32_t code;
  const char* sentence;
};

inline constexpr LastError kLastErrors[] = {
#define LAST_ERROR(name, code, sentence) {#name, code, sentence},
#include "ruxcomp/language/last_errors.def"
};

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_LAST_ERRORS_H_
