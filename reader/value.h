// The value of an item: as it is delivered, and part by part.
#ifndef READER_VALUE_H_
#define READER_VALUE_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "reader/script.h"
#include "ruxcomp/language/parts.h"

namespace ruxcomp::reader {

inline bool IsBlank(char c) { return c == ' ' || c == '\t'; }

inline std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// What begins a comment.
inline constexpr char kCommentSigns[] = {'#', ';'};

inline bool IsCommentSign(char c) { return c == kCommentSigns[0] || c == kCommentSigns[1]; }

inline bool IsCommentLine(std::string_view line) {
  const std::string_view text = Trim(line);
  return !text.empty() && IsCommentSign(text.front());
}

// A comma outside double quotes, with the blanks next to it: only the comma is delivered.
struct Separator {
  std::size_t begin;
  std::size_t comma;
  std::size_t end;

  std::size_t blanks() const { return end - begin - 1; }
};

// The separator at a comma of a text; what is before `start` belongs to another separator.
inline Separator SeparatorAt(std::string_view text, std::size_t comma, std::size_t start) {
  Separator separator{comma, comma, comma + 1};
  while (separator.begin > start && IsBlank(text[separator.begin - 1])) --separator.begin;
  while (separator.end < text.size() && IsBlank(text[separator.end])) ++separator.end;
  return separator;
}

// Copies a text without the blanks of its separators, whose number is given, and returns the end of
// the copy.
char* CopyWithoutBlanks(std::string_view text, std::uint32_t blanks_at_commas, char* out);

inline char* CopyCooked(std::string_view text, std::uint32_t blanks_at_commas, char* out) {
  if (blanks_at_commas == 0) return std::copy(text.begin(), text.end(), out);
  return CopyWithoutBlanks(text, blanks_at_commas, out);
}

// The value as it is delivered: without these blanks.
std::string CookedValue(const Item& item);

// The next part of an item's value.
inline std::string_view NextPart(const Item& item, ruxcomp::language::Splitter& parts) {
  const std::string_view part = parts.Next();
  const bool is_quoted = part.data() != item.value.data() && *(part.data() - 1) == '"';
  return item.blanks_at_commas == 0 || is_quoted ? part : Trim(part);
}

// Calls `visit` with each comma-separated part of the delivered value, in order, as a view that
// Script::RangeOf understands.
template <typename Visit>
void ForEachPart(const Item& item, Visit visit) {
  for (ruxcomp::language::Splitter parts(item.value); !parts.IsAtEnd();)
    visit(NextPart(item, parts));
}

std::vector<std::string_view> Parts(const Item& item);

// The first part; empty when there is none.
std::string_view FirstPart(const Item& item);

}  // namespace ruxcomp::reader

#endif  // READER_VALUE_H_
