// What the limits of sensors are numbers of: a rule of the project file.
#ifndef SETTINGS_LIMIT_RULE_H_
#define SETTINGS_LIMIT_RULE_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace rux::settings {

// The signs that a rule for limits may state.
inline constexpr std::string_view kSigned = "signed";
inline constexpr std::string_view kUnsigned = "unsigned";

// What the limits of some sensors are numbers of. What is empty is left to the rules after it.
struct LimitRule {
  std::string sensors;                // a pattern of NAMEs; empty: all
  std::optional<std::uint64_t> type;  // the TYPE that the sensors have; none: any
  std::string unit;
  std::uint64_t divisor = 0;  // of the number, for the amount in that unit; 0: not given
  std::string sign;           // "signed", "unsigned"
  // The properties, without P_, in which a sensor itself says so.
  std::string unit_property;
  std::string divisor_property;
  std::string sign_property;
};

// Whether the rule is about sensors of that NAME and TYPE.
bool Fits(const LimitRule& rule, std::string_view name, std::optional<std::uint64_t> type);

}  // namespace rux::settings

#endif  // SETTINGS_LIMIT_RULE_H_
