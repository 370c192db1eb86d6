// Finding what a path calls a section or an entry.
#ifndef INSPECT_SECTION_SEARCH_H_
#define INSPECT_SECTION_SEARCH_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "inspect/meta_path.h"
#include "support/failure.h"

namespace rux::inspect {

// The sections of one kind, in file order.
struct NamedSections {
  std::string keyword;
  std::size_t count;
  // Of the section of that ordinal; none when it has none.
  std::function<std::optional<std::string>(std::size_t)> name;
  std::function<std::optional<std::uint32_t>(std::size_t)> id;
  // Faster ways to the ordinal of the first section of that name or ID, where there are any.
  std::function<std::optional<std::size_t>(const std::string&)> named = {};
  std::function<std::optional<std::size_t>(std::uint32_t)> with_id = {};
};

// The number of a step such as "@0".
std::optional<std::uint32_t> OrdinalOf(const PathStep& step);

// The ordinal of the section that the step names by its ordinal, ID or name. Throws a Failure of
// findings that names what is near it.
std::size_t FindSection(const NamedSections& sections, const PathStep& step);

// The end of a question for what is not there.
support::Failure NotFound(const std::string& text);
// `lack`: "the SENSOR section has no", "no GLOBAL section has an". `keys` are those that there are.
support::Failure EntryNotFound(const std::string& lack, const std::string& key,
                               const std::vector<std::string>& keys);

}  // namespace rux::inspect

#endif  // INSPECT_SECTION_SEARCH_H_
