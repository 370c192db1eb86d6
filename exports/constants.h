// What programs that query a machine call by name: its IDs, names, ordinals and entries, and the
// numbers of the language.
#ifndef EXPORTS_CONSTANTS_H_
#define EXPORTS_CONSTANTS_H_

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "exports/account.h"
#include "machine/machine.h"

namespace rux::exports {

struct Constant {
  std::string name;  // as identifiers.h has it
  std::variant<std::uint32_t, std::string> value;
};

struct ConstantBlock {
  const char* title;
  std::vector<Constant> constants;
};

// Names are unique among all blocks. They begin with a kind of constants, so none is a keyword of a
// programming language.
std::vector<ConstantBlock> ConstantsOf(const machine::Machine& machine, Account& account);

}  // namespace rux::exports

#endif  // EXPORTS_CONSTANTS_H_
