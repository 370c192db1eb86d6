// The limits of a sensor, which are numbers of one scale, in three texts.
#ifndef IMPORTS_ONE_SCALE_H_
#define IMPORTS_ONE_SCALE_H_

#include <optional>
#include <string>

#include "imports/script_lines.h"

namespace rux::imports {

// Whether the line is a limit, or says what limits are numbers of.
bool IsAboutLimits(const ScriptLine& line);

// What an import wrote of a sensor, what became of it, and what another import would write. Null:
// the section is not there.
struct SensorVersions {
  const ScriptPart* base;
  const ScriptPart* edited;
  const ScriptPart* written;
};

// Whether limits were edited and would be written otherwise, and not all are numbers of one scale:
// then a line alone does not say which amount it is.
bool HaveTwoScales(const SensorVersions& versions);

// The texts of the sections, with the same amounts as numbers of the finest scale.
struct InOneScale {
  std::string base;
  std::string edited;
  std::string written;
};
// None when units or signs differ, a limit is not a number, or one does not fit.
std::optional<InOneScale> BroughtToOneScale(const SensorVersions& versions);

}  // namespace rux::imports

#endif  // IMPORTS_ONE_SCALE_H_
