// A script and what formatting makes of it.
#ifndef DRIVER_FORMATTED_SCRIPT_H_
#define DRIVER_FORMATTED_SCRIPT_H_

#include <cstdint>
#include <string>
#include <utility>

namespace rux::driver {

enum class FormatState {
  kUnchanged,  // it is formatted
  kChanged,
  kRefused,     // it stays as it is
  kUnreadable,  // or cannot be written
};

struct FormattedScript {
  std::string path;     // as it can be opened
  bool is_file = true;  // otherwise its text came from standard input
  std::string text;
  std::string formatted;  // when it is changed
  FormatState state = FormatState::kUnchanged;
  std::uint32_t line = 0;  // that the reason is about; 0: none
  std::string reason;      // of the last two states

  void Refuse(std::uint32_t at, std::string why) {
    state = FormatState::kRefused;
    line = at;
    reason = std::move(why);
  }
};

}  // namespace rux::driver

#endif  // DRIVER_FORMATTED_SCRIPT_H_
