#include "reader/value.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "reader/script.h"
#include "ruxcomp/language/parts.h"

namespace ruxcomp::reader {

// While blanks are left, so is a comma: no walk to the next comma passes the end of the text.
char* CopyWithoutBlanks(std::string_view text, std::uint32_t blanks_at_commas, char* out) {
  std::size_t at = 0;
  while (blanks_at_commas != 0) {
    for (; text[at] > ','; ++at) *out++ = text[at];  // neither quote nor comma nor blank
    std::size_t end = at + 1;
    if (text[at] == '"') {
      end = text.find('"', end) + 1;
    } else {
      std::size_t comma = at;
      while (IsBlank(text[comma])) ++comma;
      if (text[comma] == ',') {
        const Separator separator = SeparatorAt(text, comma, at);
        *out++ = ',';
        blanks_at_commas -= static_cast<std::uint32_t>(separator.blanks());
        at = separator.end;
        continue;
      }
      end = std::max(end, comma);
    }
    for (; at != end; ++at) *out++ = text[at];
  }
  return std::copy(text.begin() + at, text.end(), out);
}

std::string CookedValue(const Item& item) {
  std::string value(item.value.size() - item.blanks_at_commas, '\0');
  CopyCooked(item.value, item.blanks_at_commas, value.data());
  return value;
}

std::vector<std::string_view> Parts(const Item& item) {
  std::vector<std::string_view> parts;
  ForEachPart(item, [&](std::string_view part) { parts.push_back(part); });
  return parts;
}

std::string_view FirstPart(const Item& item) {
  ruxcomp::language::Splitter parts(item.value);
  return parts.IsAtEnd() ? std::string_view() : NextPart(item, parts);
}

}  // namespace ruxcomp::reader
