// Where something is in the files that machines are read from.
#ifndef MACHINE_PLACE_H_
#define MACHINE_PLACE_H_

#include <cstdint>
#include <optional>
#include <string>

#include "support/json.h"

namespace rux::machine {

struct Place {
  std::string path;           // from the working folder, unless it is whole
  std::uint32_t line = 0;     // 0: all of the file
  std::string revision = {};  // of git, which has the file; empty: the file system has it

  // "cpu.rux", "HEAD~1:cpu.rux"
  std::string File() const { return revision.empty() ? path : revision + ':' + path; }
  // "cpu.rux:12"
  std::string Text() const { return File() + ':' + std::to_string(line); }
  // The same, safe to show.
  std::string SafeText() const;
};

// The member "place" with "file" and "line"; nothing for none.
void WritePlace(support::JsonObject& json, const std::optional<Place>& place);

}  // namespace rux::machine

#endif  // MACHINE_PLACE_H_
