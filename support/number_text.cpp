#include "support/number_text.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace rux::support {

std::string NumberText(std::uint32_t number) {
  const auto with_sign = static_cast<std::int32_t>(number);
  if (with_sign >= 0) return fmt::format("{0} (0x{0:X})", number);
  return fmt::format("{0} (0x{0:X}, {1})", number, with_sign);
}

std::string IdText(std::uint32_t id) { return fmt::format("#0x{:X}", id); }

std::string CountText(std::size_t count, std::string_view noun) {
  const std::string_view ending = noun.back() == 'x' ? "es" : "s";
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : ending);
}

}  // namespace rux::support
