// What the values of a machine access: each place on a bus, and by what.
#ifndef PAGE_BUS_ACCESSES_H_
#define PAGE_BUS_ACCESSES_H_

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "page/contents.h"

namespace rux::page {

// The parts of an access that say where it goes, in the order of the columns.
constexpr const char* kPlaceParts[] = {"BusType", "BaseAddress", "Operand", "Number"};

struct BusAccess {
  std::vector<std::string> place;  // the texts of the parts
  bool is_write = false;
  std::optional<Thing> via = {};  // the action that accesses it when it is called

  // By the numbers of the place: 4, 0xC, 0x10, VALUE_1.
  bool operator<(const BusAccess& other) const;
};

// With the things whose values access it, or call what does; calls may pass the place, or what it
// is calculated from. An argument that no call passes, or that very many do, is left as it is
// written.
std::map<BusAccess, std::set<Thing>> BusAccessesOf(const Contents& contents);

}  // namespace rux::page

#endif  // PAGE_BUS_ACCESSES_H_
