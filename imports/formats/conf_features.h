// What sensors.conf calls the things that chips measure.
#ifndef IMPORTS_FORMATS_CONF_FEATURES_H_
#define IMPORTS_FORMATS_CONF_FEATURES_H_

#include <optional>
#include <string>
#include <string_view>

#include "imports/board.h"
#include "ruxcomp/language/entries.h"

namespace rux::imports {

// "in0_min": the feature in0, and what is set of it, min.
struct ConfName {
  std::string feature;
  std::string attribute;             // empty: the feature itself
  std::optional<Quantity> quantity;  // none: a name of the whole chip, or an unknown one
};
ConfName ConfNameOf(const std::string& name);

// The limit that an attribute is.
std::optional<language::EntryId> LimitFor(std::string_view attribute);
// Whether it is a limit that sensors of scripts lack: emergency, and where an alarm ends.
bool IsOtherLimit(std::string_view attribute);

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_CONF_FEATURES_H_
