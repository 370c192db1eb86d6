#include "exports/identifiers.h"

#include <cctype>
#include <cstddef>
#include <string>
#include <string_view>

#include "support/utf8.h"

namespace rux::exports {
namespace {

std::string InCapitals(std::string_view name) {
  std::string capitals;
  while (!name.empty()) {
    const support::Character character = support::FirstCharacter(name);
    name.remove_prefix(character.bytes.size());
    const auto byte = static_cast<unsigned char>(character.bytes.front());
    const bool is_kept = byte < 0x80 && std::isalnum(byte) != 0;
    capitals += is_kept ? static_cast<char>(std::toupper(byte)) : '_';
  }
  return capitals;
}

}  // namespace

std::string Identifiers::Add(std::string_view prefix, std::string_view name) {
  const std::string wanted = std::string(prefix) + InCapitals(name);
  std::string identifier = wanted;
  if (!taken_.insert(identifier).second) {
    std::size_t& suffix = last_suffix_.try_emplace(wanted, 1).first->second;
    do {
      identifier = wanted + '_' + std::to_string(++suffix);
    } while (!taken_.insert(identifier).second);
  }
  return identifier;
}

}  // namespace rux::exports
