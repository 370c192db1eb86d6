// A part of the place of an access: as it is written, and what it is calculated from.
#ifndef PAGE_PLACE_TERM_H_
#define PAGE_PLACE_TERM_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "compiled/datum.h"
#include "machine/value.h"
#include "ruxcomp/model/handles.h"

namespace rux::page {

struct PlaceTerm {
  std::optional<compiled::Datum> item = {};  // none: the value has no such part
  bool is_address = false;
  // Of a step with a calculation, "VALUE_1": its sign, and the two numbers that it takes.
  std::string sign = {};
  std::vector<PlaceTerm> operands = {};
};

// The number of an argument: 1 of ARG1. None of anything else.
std::optional<std::uint32_t> ArgumentIn(const compiled::Datum& item);

// The first argument in the term; none when it has none.
std::optional<std::uint32_t> ArgumentIn(const PlaceTerm& term);

// Puts what a call passes in the place of arguments, the first of which has that number. False, and
// the term may be half filled, when the call does not pass one of them.
bool Pass(const std::vector<compiled::Datum>& arguments, std::uint32_t first, PlaceTerm& term);

// What the term is shown as: a number wherever the result depends on nothing but numbers.
std::string TextOf(const PlaceTerm& term);

// The steps of an action, by their keys.
class Steps {
 public:
  explicit Steps(const std::vector<ruxcomp::Entry>& entries, const ruxcomp::Section& section);

  PlaceTerm TermOf(const compiled::Datum& item, bool is_address) const {
    return TermOf(item, is_address, 0);
  }

 private:
  // A step may use others, also itself.
  static constexpr int kMostDepth = 4;

  PlaceTerm TermOf(const compiled::Datum& item, bool is_address, int depth) const;

  std::map<std::string, machine::EntryValue> calculations_;
};

}  // namespace rux::page

#endif  // PAGE_PLACE_TERM_H_
