// Texts in XML, HTML and Markdown.
#ifndef SUPPORT_MARKUP_TEXT_H_
#define SUPPORT_MARKUP_TEXT_H_

#include <string>
#include <string_view>

namespace rux::support {

// In an element or in an attribute between double quotes, of a text that is safe to show
// (safe_text.h): XML cannot have most of what is not.
std::string MarkupText(std::string_view safe_text);

// The text as Markdown that means nothing but itself, in a paragraph or a cell of a table.
std::string MarkdownText(std::string_view safe_text);

// A page that needs no other file, up to its heading, and what ends it.
std::string HtmlHead(std::string_view safe_title);
inline constexpr std::string_view kHtmlEnd = "</body>\n</html>\n";

}  // namespace rux::support

#endif  // SUPPORT_MARKUP_TEXT_H_
