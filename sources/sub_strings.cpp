#include "sources/sub_strings.h"

#include <algorithm>
#include <cstddef>

namespace rux::sources {
namespace {

// Takes the first part off a value that is not empty. False: it was the last one.
bool TakeSubString(std::string_view& value, std::string_view& part) {
  std::size_t comma = value.find(',');
  part = value.substr(0, comma);
  const std::size_t quote = part.find('"');
  if (quote != std::string_view::npos) {
    const std::size_t closing = value.find('"', quote + 1);
    part = value.substr(quote + 1, closing - quote - 1);
    comma = closing == std::string_view::npos ? closing : value.find(',', closing);
  }
  if (comma == std::string_view::npos) return false;
  value.remove_prefix(comma + 1);
  return true;
}

}  // namespace

void SubStrings(std::string_view value, std::vector<std::string_view>& parts) {
  parts.clear();
  // Most values are one part as it stands.
  const auto is_special = [](char c) { return c == ',' || c == '"'; };
  if (!value.empty() && std::none_of(value.begin(), value.end(), is_special)) {
    parts.push_back(value);
    return;
  }
  for (bool more = !value.empty(); more;) {
    std::string_view part;
    more = TakeSubString(value, part);
    parts.push_back(part);
  }
}

std::vector<std::string_view> SubStrings(std::string_view value) {
  std::vector<std::string_view> parts;
  SubStrings(value, parts);
  return parts;
}

std::string_view FirstSubString(std::string_view value) {
  std::string_view part;
  if (!value.empty()) TakeSubString(value, part);
  return part;
}

}  // namespace rux::sources
