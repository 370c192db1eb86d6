// A header that is missing makes the items of two sections those of one.
#ifndef ADVICE_MISSING_HEADER_H_
#define ADVICE_MISSING_HEADER_H_

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "reader/script.h"
#include "ruxcomp/language/sections.h"

namespace rux::advice {

// Items from `first` to before `end`.
struct Items {
  const ruxcomp::reader::Item* first;
  const ruxcomp::reader::Item* end;
};

// What the rest of the script shows.
struct Evidence {
  std::function<bool(std::string_view)> is_missed;  // a word or a global that is used, not defined
  std::function<bool(std::string_view)> is_action;  // the NAME of an ACTION
};

struct MissingHeader {
  const ruxcomp::language::SectionKind* kind;
  Items swallowed;           // what it should be above, to the end of the section
  bool is_unopened = false;  // it is the first of these, without its [
};

// The items of another section at the end of this one.
std::optional<MissingHeader> FindMissingHeader(const ruxcomp::reader::Section& section,
                                               const Evidence& evidence);

// "is a [SENSOR] line missing above line 62?"
std::string HintAbove(const ruxcomp::language::SectionKind& kind, std::uint32_t line);

// The kind of sections that have such items, when only one kind has.
const ruxcomp::language::SectionKind* KindOfItems(const Items& items, const Evidence& evidence);

}  // namespace rux::advice

#endif  // ADVICE_MISSING_HEADER_H_
