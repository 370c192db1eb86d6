// The comma-separated parts of an item's value.
#ifndef SOURCES_SUB_STRINGS_H_
#define SOURCES_SUB_STRINGS_H_

#include <string_view>
#include <vector>

#include "reader/script.h"

namespace rux::sources {

// The parts as the library takes them: what stands between commas, or, in a part with a double
// quote, between that quote and the next one, commas included (up to the end of the value when
// there is no next one). An empty value has no parts. The views point into the item's value.
std::vector<std::string_view> SubStrings(const reader::Item& item);

// The same into a list that is used again; what it held is dropped.
void SubStrings(const reader::Item& item, std::vector<std::string_view>& parts);

// The first part; empty when there is none.
std::string_view FirstSubString(const reader::Item& item);

// The first part of a value as the library was given it.
std::string_view FirstSubString(std::string_view value);

}  // namespace rux::sources

#endif  // SOURCES_SUB_STRINGS_H_
