// A text in XML or HTML, in an element or in an attribute between double quotes.
#ifndef SUPPORT_MARKUP_TEXT_H_
#define SUPPORT_MARKUP_TEXT_H_

#include <string>
#include <string_view>

namespace rux::support {

// Of a text that is safe to show (safe_text.h): XML cannot have most of what is not.
std::string MarkupText(std::string_view safe_text);

}  // namespace rux::support

#endif  // SUPPORT_MARKUP_TEXT_H_
