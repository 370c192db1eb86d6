// The path of a question to a meta file: SENSOR/CPU0_TEMP/VALUE/Args.
#ifndef INSPECT_META_PATH_H_
#define INSPECT_META_PATH_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace rux::inspect {

struct PathStep {
  std::string text;
  bool quoted;  // was in double quotes: a name, whatever it looks like

  // The number after the sign: "#0x101" of '#', "@0" of '@'. None when the step is a name. Throws
  // a Failure of wrong usage when what follows the sign is not a number.
  std::optional<std::uint32_t> NumberAfter(char sign) const;
};

// Splits at slashes. A step in double quotes is taken literally, slashes included; a doubled
// quote in it stands for one quote. Throws a Failure of wrong usage for an empty step and for a
// quote without its end.
std::vector<PathStep> ParsePath(const std::string& path);

}  // namespace rux::inspect

#endif  // INSPECT_META_PATH_H_
