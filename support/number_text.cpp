#include "support/number_text.h"

#include <fmt/format.h>

#include <cstdint>
#include <string>

namespace rux::support {

std::string NumberText(std::uint32_t number) {
  const auto with_sign = static_cast<std::int32_t>(number);
  if (with_sign >= 0) return fmt::format("{0} (0x{0:X})", number);
  return fmt::format("{0} (0x{0:X}, {1})", number, with_sign);
}

}  // namespace rux::support
