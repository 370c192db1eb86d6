// Patterns as shells have them.
#ifndef SUPPORT_PATTERN_H_
#define SUPPORT_PATTERN_H_

#include <string>

namespace rux::support {

// Whether the whole text is what a pattern with *, ? and [...] describes.
bool FitsPattern(const std::string& pattern, const std::string& text);

// The same, whatever the case of letters.
bool FitsPatternInAnyCase(const std::string& pattern, const std::string& text);

}  // namespace rux::support

#endif  // SUPPORT_PATTERN_H_
