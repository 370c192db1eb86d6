// The parts that belong where one writes a value.
#ifndef ASSISTANCE_SIGNATURE_H_
#define ASSISTANCE_SIGNATURE_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "assistance/place.h"

namespace rux::assistance {

struct Signature {
  struct Parameter {
    std::uint32_t begin;  // in the label
    std::uint32_t end;
  };

  std::string label;                  // "VT_CALL, name (action), args (operands ...)"
  std::vector<Parameter> parameters;  // the parts, the type's own first
  std::uint32_t active = 0;           // which of them the place is in; beyond the last one: none
};

// Of a value with a known type, and of a repeater. A call has the arguments of its action.
std::optional<Signature> SignatureAt(const Place& at);

}  // namespace rux::assistance

#endif  // ASSISTANCE_SIGNATURE_H_
