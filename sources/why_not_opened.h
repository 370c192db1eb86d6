// Why a script could not be read.
#ifndef SOURCES_WHY_NOT_OPENED_H_
#define SOURCES_WHY_NOT_OPENED_H_

#include <string>

namespace rux::sources {

// The reason for which the reader has not opened the file, for people: it tells none itself. Told
// from what stands at the path now.
std::string WhyNotOpened(const std::string& path);

}  // namespace rux::sources

#endif  // SOURCES_WHY_NOT_OPENED_H_
