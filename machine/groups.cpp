#include "machine/groups.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "ruxcomp/model/handles.h"

namespace rux::machine {

std::vector<std::string> GroupsOf(const ruxcomp::Section& section) {
  std::vector<std::string> names;
  std::set<std::uint32_t> known;
  ruxcomp::Section group = section.parent();
  while (group && known.insert(group.ordinal()).second) {
    names.emplace_back(group.name());
    group = group.parent();
  }
  std::reverse(names.begin(), names.end());
  return names;
}

}  // namespace rux::machine
