// What the library, its reader and a run itself report, as values.
#ifndef RUN_FINDINGS_H_
#define RUN_FINDINGS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "findings/message_row.h"
#include "findings/origin.h"

namespace rux::run {

// What the library was doing. kLoad is before main().
enum class Phase { kLoad, kStart, kParse, kCheck, kOutput };

// Of a long text, its beginning (support::Excerpted).
using Argument = std::variant<std::string, std::uint32_t>;

struct Place {
  std::string file;  // its base name
  std::uint32_t line;
};

struct Finding {
  const findings::MessageRow* row;
  findings::Origin origin = {};
  findings::Origin other = {};
  std::optional<Place> place = {};
  std::vector<Argument> arguments = {};  // of the message's format; of other texts, the text
};

}  // namespace rux::run

#endif  // RUN_FINDINGS_H_
