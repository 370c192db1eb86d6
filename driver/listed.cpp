#include "driver/listed.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace rux::driver {

std::string Listed(const std::vector<std::string>& names, std::size_t most) {
  std::string text;
  for (std::size_t i = 0; i < std::min(names.size(), most); ++i) {
    text += (i == 0 ? "" : ", ") + names[i];
  }
  if (names.size() > most) text += fmt::format(" and {} more", names.size() - most);
  return text;
}

}  // namespace rux::driver
