// The path of a question to a compiled file, SENSOR/CPU0_TEMP/VALUE/Args, and what a step of it
// names.
#ifndef INSPECT_PATH_H_
#define INSPECT_PATH_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ruxcomp/language/sections.h"
#include "support/failure.h"

namespace rux::inspect {

struct PathStep {
  std::string text;
  bool quoted;  // was in double quotes: a name, whatever it looks like

  // The number after the sign: "#0x101" of '#', "@0" of '@'. None when the step is a name. Throws
  // a Failure of wrong usage when what follows the sign is not a number.
  std::optional<std::uint32_t> NumberAfter(char sign) const;
};

// Splits at slashes. A step in double quotes is taken literally, slashes included; a doubled
// quote in it stands for one quote. Throws a Failure of wrong usage for an empty step and for a
// quote without its end.
std::vector<PathStep> ParsePath(const std::string& path);

// The command that lists the sections of a kind, for suggestions: of a compiled file, unless it is
// another one.
using Lister = std::string (*)(const std::string& keyword);
std::string LsCommand(const std::string& keyword);

// The sections of one kind, in file order.
struct NamedSections {
  std::string keyword;
  std::size_t count;
  // Of the section of that ordinal; none when it has none.
  std::function<std::optional<std::string>(std::size_t)> name;
  std::function<std::optional<std::uint32_t>(std::size_t)> id;
  // Faster ways to the ordinal of the first section of that name or ID, where there are any.
  std::function<std::optional<std::size_t>(const std::string&)> named = {};
  std::function<std::optional<std::size_t>(std::uint32_t)> with_id = {};
  Lister lister = LsCommand;
};

// The number of a step such as "@0".
std::optional<std::uint32_t> OrdinalOf(const PathStep& step);

// The ordinal of the section that the step names by its ordinal, ID or name. Throws a Failure of
// findings that names what is near it.
std::size_t FindSection(const NamedSections& sections, const PathStep& step);

// Throws a Failure of findings when the path names a kind only.
void ExpectSection(const ruxcomp::language::SectionKind& kind, const std::vector<PathStep>& path,
                   Lister lister = LsCommand);

// The end of a question that goes on after a part.
support::Failure PathTooLong();
// There is no n-th value.
support::Failure NoValueAt(std::uint32_t n, std::size_t count);

// The end of a question for what is not there.
support::Failure NotFound(const std::string& text);
// `lack`: "the SENSOR section has no", "no GLOBAL section has an". `keys` are those that there are.
support::Failure EntryNotFound(const std::string& lack, const std::string& key,
                               const std::vector<std::string>& keys);

}  // namespace rux::inspect

#endif  // INSPECT_PATH_H_
