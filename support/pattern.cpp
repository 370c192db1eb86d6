#include "support/pattern.h"

#include <fnmatch.h>

#include <string>

namespace rux::support {

bool FitsPattern(const std::string& pattern, const std::string& text) {
  return fnmatch(pattern.c_str(), text.c_str(), 0) == 0;
}

bool FitsPatternInAnyCase(const std::string& pattern, const std::string& text) {
  return fnmatch(pattern.c_str(), text.c_str(), FNM_CASEFOLD) == 0;
}

}  // namespace rux::support
