// A page as one file that needs no other.
#ifndef PAGE_DOCUMENT_H_
#define PAGE_DOCUMENT_H_

#include <string>
#include <string_view>

#include "page/contents.h"
#include "page/html.h"

namespace rux::page {

// What every page begins with.
inline constexpr std::string_view kPageBegin = "<!DOCTYPE html>";

// What comes before and after the parts of every page. The policy in its head allows its own style
// and its own script, and no request.
void WriteHead(const std::string& title, const Html& navigation, Html& out);
void WriteEnd(Html& out);

// Of a machine.
std::string PageOf(const Contents& contents);

}  // namespace rux::page

#endif  // PAGE_DOCUMENT_H_
