#include "sources/sub_strings.h"

#include "reader/value.h"

namespace rux::sources {

std::vector<std::string_view> SubStrings(const reader::Item& item) { return reader::Parts(item); }

void SubStrings(const reader::Item& item, std::vector<std::string_view>& parts) {
  parts.clear();
  reader::ForEachPart(item, [&](std::string_view part) { parts.push_back(part); });
}

std::string_view FirstSubString(const reader::Item& item) { return reader::FirstPart(item); }

std::string_view FirstSubString(std::string_view value) {
  return FirstSubString(reader::Item{{}, value, 0, 0});
}

}  // namespace rux::sources
