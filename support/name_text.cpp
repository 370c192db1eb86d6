#include "support/name_text.h"

#include <algorithm>

#include "support/safe_text.h"

namespace rux::support {
namespace {

bool NeedsQuotes(std::string_view name) {
  constexpr std::string_view kBeginningsOfOthers = "#@";
  const auto separates = [](char c) {
    return static_cast<unsigned char>(c) <= ' ' || c == '/' || c == '"' || c == ',' || c == '\x7F';
  };
  return name.empty() || kBeginningsOfOthers.find(name.front()) != std::string_view::npos ||
         std::any_of(name.begin(), name.end(), separates);
}

}  // namespace

std::string NameText(std::string_view name) {
  if (!NeedsQuotes(name)) return std::string(name);
  std::string quoted = "\"";
  for (const char c : name) quoted.append(c == '"' ? 2 : 1, c);
  return SafeText(quoted + '"');
}

}  // namespace rux::support
