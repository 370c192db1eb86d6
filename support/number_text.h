// Numbers as people read them.
#ifndef SUPPORT_NUMBER_TEXT_H_
#define SUPPORT_NUMBER_TEXT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace rux::support {

// "85 (0x55)"; with the top bit set, also the number that a script may have written with a sign:
// "4294967276 (0xFFFFFFEC, -20)".
std::string NumberText(std::uint32_t number);

// An ID, as paths of queries have it: "#0x101"
std::string IdText(std::uint32_t id);

// "1 change", "2 changes", "3 fixes"
std::string CountText(std::size_t count, std::string_view noun);

}  // namespace rux::support

#endif  // SUPPORT_NUMBER_TEXT_H_
