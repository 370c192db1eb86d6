// What is in a file that is not a script.
#ifndef SOURCES_CONTENT_H_
#define SOURCES_CONTENT_H_

#include <string_view>

namespace rux::sources {

// What the bytes are and what to do about it, as a phrase for a message; empty for what may be a
// script. Knows what is given for a script by mistake: compiled files, other
// binary data, and text in UTF-16 or UTF-32.
std::string_view WhyNotAScript(std::string_view bytes);

}  // namespace rux::sources

#endif  // SOURCES_CONTENT_H_
