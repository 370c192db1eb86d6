#include "driver/source_date.h"

#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>

#include "support/failure.h"
#include "support/safe_text.h"

namespace rux::driver {

std::optional<std::uint32_t> SourceDateEpoch() {
  constexpr const char* kName = "SOURCE_DATE_EPOCH";
  const char* value = std::getenv(kName);
  if (value == nullptr) return std::nullopt;
  const std::string_view text = value;
  std::uint32_t time = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), time);
  if (error != std::errc() || end != text.data() + text.size()) {
    throw support::Failure(support::ExitStatus::kWrongUsage,
                           "{} is '{}', which is no number of seconds from 0 to {}", kName,
                           support::Shortened(text), std::numeric_limits<std::uint32_t>::max());
  }
  return time;
}

}  // namespace rux::driver
