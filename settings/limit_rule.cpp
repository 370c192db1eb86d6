#include "settings/limit_rule.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "support/pattern.h"

namespace rux::settings {

bool Fits(const LimitRule& rule, std::string_view name, std::optional<std::uint64_t> type) {
  if (rule.type && rule.type != type) return false;
  return rule.sensors.empty() || support::FitsPattern(rule.sensors, std::string(name));
}

}  // namespace rux::settings
