// The kinds of sections that a meta file can hold.
#ifndef INSPECT_KINDS_H_
#define INSPECT_KINDS_H_

#include <cstdint>
#include <string>
#include <vector>

namespace rux::inspect {

struct Kind {
  std::string keyword;
  std::uint32_t section;  // a RUX_SECT_...
  bool has_names;         // its sections have a NAME; those of others are told by their entries
};

// In the order of the keyword table.
const std::vector<Kind>& Kinds();

// The kind of that keyword, in capitals or not; null when meta files have none.
const Kind* FindKind(const std::string& keyword);

}  // namespace rux::inspect

#endif  // INSPECT_KINDS_H_
