#include "frontend/defined_words.h"

#include <cstdint>
#include <string_view>

#include "frontend/text_errors.h"
#include "ruxcomp/language/number.h"

namespace ruxcomp::core {

void AddPredDefineValue(std::string_view name, std::uint32_t value) {
  g_tblPreDefine[name] = value;
}

std::uint32_t GetPreDefinedValue(std::string_view name, std::uint32_t& value) {
  const std::uint32_t* found = g_tblPreDefine.Find(name);
  if (!found) return 0;
  value = *found;
  return 1;
}

// Inlines all that it calls: most texts of a script are read as numbers, some of them several
// times.
[[gnu::flatten]] std::uint32_t StringToLong(std::string_view text, std::uint32_t& out) {
  const ruxcomp::language::Number number = ruxcomp::language::ReadNumber(text);
  if (!number.is_too_long) out = number.value;
  if (number.raises) RaiseNoCharacter();
  return number.is_number ? 1 : 0;
}

std::uint32_t NumberOrWord(std::string_view text, std::uint32_t& out) {
  return StringToLong(text, out) || GetPreDefinedValue(text, out) ? 1 : 0;
}

std::uint32_t WordOrNumber(std::string_view text, std::uint32_t& out) {
  return GetPreDefinedValue(text, out) || StringToLong(text, out) ? 1 : 0;
}

}  // namespace ruxcomp::core
