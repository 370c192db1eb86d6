#include "settings/limit_rule.h"

#include <fnmatch.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace rux::settings {

bool Fits(const LimitRule& rule, std::string_view name, std::optional<std::uint64_t> type) {
  if (rule.type && rule.type != type) return false;
  return rule.sensors.empty() || fnmatch(rule.sensors.c_str(), std::string(name).c_str(), 0) == 0;
}

}  // namespace rux::settings
