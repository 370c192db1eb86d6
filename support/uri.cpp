#include "support/uri.h"

#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "support/ascii.h"
#include "support/safe_text.h"

namespace rux::support {
namespace {

constexpr std::string_view kScheme = "file://";
constexpr std::string_view kThisMachine = "localhost";

bool IsUnreserved(char c) {
  constexpr std::string_view kPlain = "-._~/";
  return IsLetterOrDigit(c) || kPlain.find(c) != std::string_view::npos;
}

// What is no escape stays as it is.
std::string Decoded(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned char byte = 0;
    const char* const digits = text.data() + i + 1;
    if (text[i] == '%' && text.size() - i > 2 &&
        std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
      decoded += static_cast<char>(byte);
      i += 2;
    } else {
      decoded += text[i];
    }
  }
  return decoded;
}

}  // namespace

std::string UriOf(std::string_view path) {
  std::string uri(path.substr(0, 1) == "/" ? kScheme : "");
  for (const char c : path) uri += IsUnreserved(c) ? std::string(1, c) : Hex({&c, 1}, "%");
  return uri;
}

std::optional<std::string> PathOfUri(std::string_view uri) {
  if (uri.substr(0, kScheme.size()) != kScheme) return std::nullopt;
  uri.remove_prefix(kScheme.size());
  if (uri.substr(0, kThisMachine.size()) == kThisMachine) uri.remove_prefix(kThisMachine.size());
  if (uri.substr(0, 1) != "/") return std::nullopt;
  std::string path = Decoded(uri.substr(0, uri.find_first_of("?#")));
  if (path.find('\0') != std::string::npos) return std::nullopt;
  return path;
}

}  // namespace rux::support
