#include "assistance/call.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assistance/place.h"
#include "index/index.h"
#include "ruxcomp/language/names.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/values.h"

namespace rux::assistance {

std::uint32_t ArgumentsOf(const index::Index& index, Id section) {
  const std::string_view text = index.TextOf(section, language::ENTRY_ARGNUMBER);
  return std::min(language::ReadNumber(text).value, kMostArguments);
}

std::optional<std::uint32_t> ArgumentsOfCall(const index::Index& index,
                                             const language::ValueType& type,
                                             const std::vector<std::string_view>& parts,
                                             std::size_t first) {
  for (std::size_t i = 0; i < type.TextCount() && first + i < parts.size(); ++i) {
    if (type.roles[i] != language::Role::kAction) continue;
    const language::NamedEntry& named = *language::FindNamed(type.roles[i], parts[first + i]);
    const Id action = index.Find({named.section, named.entry}, parts[first + i]);
    if (action == kNone) return std::nullopt;
    return ArgumentsOf(index, index.definitions()[index.TakenDefinitionOf(action)].section);
  }
  return std::nullopt;
}

std::string ArgumentText(std::uint32_t number) {
  return fmt::format("{}{}", language::kArgumentPrefix, number);
}

}  // namespace rux::assistance
