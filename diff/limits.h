// Which of two limits accepts more.
#ifndef DIFF_LIMITS_H_
#define DIFF_LIMITS_H_

#include <cstdint>
#include <optional>

#include "diff/classes.h"
#include "machine/machine.h"
#include "ruxcomp/language/entries.h"

namespace rux::diff {

// A stored number, with what it is a number of.
struct Amount {
  std::optional<std::uint32_t> number;
  machine::Quantity quantity;
};

// The class of the change; none when both are the same amount.
std::optional<ClassId> ClassOfLimit(language::LimitSide side, const Amount& before,
                                    const Amount& after);

}  // namespace rux::diff

#endif  // DIFF_LIMITS_H_
