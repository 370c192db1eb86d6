// What can be evaluated in a machine, by the path of a query.
#ifndef EVALUATION_TARGET_H_
#define EVALUATION_TARGET_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "evaluation/result.h"
#include "machine/machine.h"
#include "machine/place.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"

namespace rux::evaluation {

namespace language = ruxcomp::language;

// The entry that a value belongs to: the kind and ordinal of its section, and its identifier.
using ValueKey = std::tuple<std::uint32_t, std::uint32_t, std::uint32_t>;
ValueKey KeyOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry);

struct Target {
  const language::SectionKind* kind;
  ruxcomp::Section section;
  ruxcomp::Entry entry;                // none: all of the section
  std::vector<Result> arguments = {};  // of an action

  // "SENSOR/CPU0_TEMP", "SENSOR/CPU0_TEMP/VALUE_IPMI", "GLOBAL/G_DUTY"
  std::string Path() const;
};

// Of a path:
//
//   SENSOR/NAME               its value and its band
//   KIND/NAME/KEY             a value of a section
//   GLOBAL/G_NAME, G_NAME     a global
//   ACTION/NAME               a call
//   REPEATER/KEY              its calls
//
// with #ID or @ordinal in place of a NAME. Throws a Failure of findings that says what does not
// exist, and one of wrong usage for what cannot be evaluated.
Target FindTarget(const machine::Machine& machine, const std::string& path);

// The entry with that key as scripts write it, such as VALUE_IPMI. None: it has none.
ruxcomp::Entry ValueEntry(const ruxcomp::Section& section, std::string_view name);

// The text of the property with that name, without P_; empty when the section does not have it.
std::string_view PropertyOf(const ruxcomp::Section& section, std::string_view name);

// Where the script says it, if that is known.
std::optional<machine::Place> PlaceOf(const machine::Machine& machine,
                                      const ruxcomp::Section& section, const ruxcomp::Entry& entry);

}  // namespace rux::evaluation

#endif  // EVALUATION_TARGET_H_
