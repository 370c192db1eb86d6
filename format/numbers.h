// How hexadecimal numbers are written.
#ifndef FORMAT_NUMBERS_H_
#define FORMAT_NUMBERS_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "reader/script.h"

namespace rux::format {

// Whether the spelling of numbers in the parts of the index-th item of a section has no meaning:
// only their values are compiled. In texts, such as names, it has one.
bool HasFreeSpelling(const ruxcomp::reader::Section& section, std::size_t index);

// Whether all of a part is a hexadecimal number that has digits in small letters: 0x1a.
bool HasSmallDigits(std::string_view part);

// Such a part with capital digits: 0x1A.
void AppendCapitals(std::string& text, std::string_view part);

// Whether two texts differ at most in the case of hexadecimal digits.
bool AreSameButForDigits(std::string_view one, std::string_view other);

}  // namespace rux::format

#endif  // FORMAT_NUMBERS_H_
