// Paths as URIs, in which other programs name files.
#ifndef SUPPORT_URI_H_
#define SUPPORT_URI_H_

#include <optional>
#include <string>
#include <string_view>

namespace rux::support {

// A path as a URI of the scheme "file"; of a relative one, a reference.
std::string UriOf(std::string_view path);

// The path that a URI of the scheme "file" names; nothing for other URIs and for files of other
// machines.
std::optional<std::string> PathOfUri(std::string_view uri);

}  // namespace rux::support

#endif  // SUPPORT_URI_H_
