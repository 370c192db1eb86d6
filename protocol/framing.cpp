#include "protocol/framing.h"

#include <strings.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace rux::protocol {
namespace {

constexpr std::string_view kLength = "Content-Length";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kHeaderEnd = "\r\n\r\n";
constexpr std::size_t kLongestHeader = 4096;

bool IsLengthName(std::string_view name) {
  return name.size() == kLength.size() &&
         strncasecmp(name.data(), kLength.data(), name.size()) == 0;
}

std::optional<std::size_t> NumberIn(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool is_whole = error == std::errc() && end == text.data() + text.size();
  return is_whole ? std::optional(number) : std::nullopt;
}

// Nothing when the lines do not say, once and as a number.
std::optional<std::size_t> LengthIn(std::string_view header) {
  std::optional<std::size_t> length;
  while (!header.empty()) {
    const std::string_view line = header.substr(0, header.find(kLineEnd));
    header.remove_prefix(std::min(line.size() + kLineEnd.size(), header.size()));
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    if (!IsLengthName(line.substr(0, colon))) continue;
    if (length) return std::nullopt;
    length = NumberIn(line.substr(colon + 1));
    if (!length) return std::nullopt;
  }
  return length;
}

}  // namespace

void FrameReader::Add(std::string_view bytes) {
  bytes_.erase(0, used_);
  used_ = 0;
  const std::size_t left_out = std::min(left_out_, bytes.size());
  left_out_ -= left_out;
  bytes_ += bytes.substr(left_out);
}

FrameReader::Outcome FrameReader::Next(std::string& message) {
  const std::string_view rest = std::string_view(bytes_).substr(used_);
  const std::size_t end = rest.find(kHeaderEnd);
  if (std::min(end, rest.size()) > kLongestHeader) return Outcome::kBroken;
  if (end == std::string::npos) return Outcome::kMore;
  const std::optional<std::size_t> length = LengthIn(rest.substr(0, end));
  if (!length) return Outcome::kBroken;
  const std::size_t begin = end + kHeaderEnd.size();
  const std::size_t here = std::min(*length, rest.size() - begin);
  if (*length > kLargestMessage) {
    used_ += begin + here;
    left_out_ = *length - here;
    return Outcome::kTooLarge;
  }
  if (here < *length) return Outcome::kMore;
  message = rest.substr(begin, here);
  used_ += begin + here;
  return Outcome::kMessage;
}

std::string Framed(std::string_view message) {
  std::string framed(kLength);
  framed.append(": ").append(std::to_string(message.size())).append(kHeaderEnd);
  return framed.append(message);
}

}  // namespace rux::protocol
