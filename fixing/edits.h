// Fixes of several findings in one text.
#ifndef FIXING_EDITS_H_
#define FIXING_EDITS_H_

#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostic.h"

namespace rux::fixing {

// Whether both cannot be made at once: they have bytes in common, or are at one place.
bool Collide(const diagnostics::Fix& one, const diagnostics::Fix& other);

// The text with the fixes made, of which no two collide. They may be in any order.
std::string Fixed(std::string_view text, std::vector<diagnostics::Fix> fixes);

}  // namespace rux::fixing

#endif  // FIXING_EDITS_H_
