#include "imports/names.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "support/ascii.h"

namespace rux::imports {
namespace {

std::string WithOnly(std::string_view text, std::string_view others) {
  std::string name;
  bool is_gap = false;
  for (const char c : text.substr(0, kMostNameBytes)) {
    if (!support::IsLetterOrDigit(c) && others.find(c) == std::string_view::npos) {
      is_gap = true;
      continue;
    }
    if (is_gap && !name.empty() && name.back() != '_' && c != '_') name += '_';
    is_gap = false;
    name += c;
  }
  return name;
}

}  // namespace

std::string LegalName(std::string_view text) { return WithOnly(text, "_+-."); }

std::string LegalKey(std::string_view text) {
  std::string key = WithOnly(text, "_");
  if (!key.empty() && support::IsDigit(key.front())) key.insert(0, "_");
  return key;
}

std::string Names::Take(std::string_view text, std::string_view fallback) {
  std::string name = LegalName(text);
  const bool has_letter = name.find_first_not_of("0123456789+-._") != std::string::npos;
  if (!has_letter || support::IsDigit(name.front()))
    name = std::string(fallback) + (name.empty() ? "" : "_" + name);
  return TakeAsItIs(name);
}

std::string Names::TakeAsItIs(const std::string& name) {
  if (taken_.insert(name).second) return name;
  std::uint32_t& number = next_.try_emplace(name, 2).first->second;
  for (;; ++number) {
    std::string other = name + '_' + std::to_string(number);
    if (taken_.insert(other).second) return other;
  }
}

bool Ids::Take(std::uint32_t id) {
  return id != static_cast<std::uint32_t>(-1) && taken_.insert(id).second;
}

std::uint32_t Ids::TakeNext() {
  if (!taken_.empty() && next_ <= *taken_.rbegin()) next_ = *taken_.rbegin() + 1;
  while (!Take(next_)) next_ = std::max(next_ + 1, 1U);
  return next_;
}

}  // namespace rux::imports
