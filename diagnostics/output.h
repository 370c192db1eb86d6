// The messages of the library and of its reader, as data.
//
// Both speak through the function Output, which this program defines (output.cpp). A message is
// kept by its format and its arguments and never as printed text: the names in it may hold any
// bytes, so that no text can be taken apart again.
#ifndef DIAGNOSTICS_OUTPUT_H_
#define DIAGNOSTICS_OUTPUT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace rux::diagnostics {

// What the library was asked to do when it spoke. kLoad is before main().
enum class Phase { kLoad, kStart, kParse, kCheck, kOutput };

using Argument = std::variant<std::string, std::uint32_t>;

struct Message {
  Phase phase;
  std::string format;  // a copy: the reader that it came from may be unloaded by now
  std::vector<Argument> arguments;
};

struct MessageLog {
  Phase phase = Phase::kLoad;  // stamped on what comes in
  std::vector<Message> messages;
};

// The one log of the process. It can be used before main().
MessageLog& Messages();

// `format` with its conversions replaced by `arguments`, taken from `first` on.
std::string FormatText(std::string_view format, const std::vector<Argument>& arguments,
                       std::size_t first = 0);

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_OUTPUT_H_
