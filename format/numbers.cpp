#include "format/numbers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "reader/script.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/keys.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"

namespace rux::format {
namespace {

namespace language = ruxcomp::language;

constexpr std::string_view kPrefix = "0x";

bool IsDigit(char c) { return language::kDigitValues[static_cast<unsigned char>(c)] < 16; }

char Capital(char digit) {
  return digit >= 'a' && digit <= 'f' ? static_cast<char>(digit - 'a' + 'A') : digit;
}

}  // namespace

bool HasFreeSpelling(const ruxcomp::reader::Section& section, std::size_t index) {
  const language::SectionKind* const kind = language::FindKind(section.name);
  if (kind == nullptr) return false;
  const std::size_t row = language::FindKeyRow(*kind, section.items[index].key, index);
  const std::uint32_t entry = language::EntryOfRow(*kind, row);
  if (entry == 0) return false;
  return language::PayloadOf(entry) != language::PAYLOAD_STRING ||
         language::IsNumericString(entry) ||
         language::NameFormOf(entry) == language::NameForm::kCells;
}

bool HasSmallDigits(std::string_view part) {
  if (part.size() > language::kLongestNumber || !language::IsHexadecimal(part)) return false;
  const std::string_view digits = part.substr(kPrefix.size());
  return std::all_of(digits.begin(), digits.end(), IsDigit) &&
         std::any_of(digits.begin(), digits.end(), [](char c) { return Capital(c) != c; });
}

void AppendCapitals(std::string& text, std::string_view part) {
  text += part.substr(0, kPrefix.size());
  for (const char digit : part.substr(kPrefix.size())) text += Capital(digit);
}

bool AreSameButForDigits(std::string_view one, std::string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char a, char b) { return a == b || Capital(a) == Capital(b); });
}

}  // namespace rux::format
