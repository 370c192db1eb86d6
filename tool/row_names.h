// The names of rows as the values of an argument, in the order of the help.
#ifndef TOOL_ROW_NAMES_H_
#define TOOL_ROW_NAMES_H_

#include <iterator>
#include <string>
#include <vector>

namespace rux::tool {

// Rows of a list of formats or forms, each with a `name`.
template <class Rows>
std::vector<std::string> NamesOf(const Rows& rows) {
  std::vector<std::string> names;
  names.reserve(std::size(rows));
  for (const auto& row : rows) names.emplace_back(row.name);
  return names;
}

}  // namespace rux::tool

#endif  // TOOL_ROW_NAMES_H_
