// Names as one writes them in the path of a question.
#ifndef SUPPORT_NAME_TEXT_H_
#define SUPPORT_NAME_TEXT_H_

#include <string>
#include <string_view>

namespace rux::support {

// The name itself, or in double quotes (those inside doubled) when it could not be told from the
// rest of a path or of a line. Control bytes are shown as \xNN; those names cannot be typed back.
std::string NameText(std::string_view name);

}  // namespace rux::support

#endif  // SUPPORT_NAME_TEXT_H_
