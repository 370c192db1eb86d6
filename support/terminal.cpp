#include "support/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>
#include <system_error>

#include "support/failure.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "support/wrap.h"

namespace rux::support {
namespace {

std::string_view Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

// Zero when the environment does not say.
std::size_t ColumnsOfEnvironment() {
  const std::string_view digits = Environment("COLUMNS");
  std::size_t columns = 0;
  const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), columns);
  return error == std::errc() && stop == digits.data() + digits.size() ? columns : 0;
}

// Zero when the descriptor is not a terminal, or one of unknown size.
std::size_t ColumnsOfTerminal(int descriptor) {
  struct winsize size = {};
  // <sys/ioctl.h> has the request from a header of the kernel.
  const int answer = ioctl(descriptor, TIOCGWINSZ, &size);  // NOLINT(misc-include-cleaner)
  return answer == 0 ? size.ws_col : 0;
}

std::size_t WidthOn(int descriptor) {
  constexpr std::size_t kDefault = 80;
  constexpr std::size_t kLeast = 20;
  std::size_t columns = ColumnsOfEnvironment();
  if (columns == 0) columns = ColumnsOfTerminal(descriptor);
  return columns == 0 ? kDefault : std::max(columns, kLeast);
}

}  // namespace

std::size_t TextWidth() { return WidthOn(STDOUT_FILENO); }

std::size_t StatusWidth() {
  const bool can_erase = isatty(STDERR_FILENO) != 0 && Environment("TERM") != "dumb";
  return can_erase ? WidthOn(STDERR_FILENO) : 0;
}

void PrintAsIs(std::string_view what, std::string_view text, std::string_view advice) {
  if (isatty(STDOUT_FILENO) != 0 && !AreSafeLines(text)) {
    throw Failure(ExitStatus::kWrongUsage, "{} has characters that could control a terminal: {}",
                  what, advice);
  }
  PrintOut(text);
}

bool UsesColour(const std::string& color, int descriptor) {
  if (color != "auto") return color == "always";
  return isatty(descriptor) != 0 && Environment("NO_COLOR").empty() &&
         Environment("TERM") != "dumb";
}

std::string Bold(std::string_view text, bool uses_colour) {
  return uses_colour ? "\033[1m" + std::string(text) + "\033[0m" : std::string(text);
}

OutputStyle StyleOfOutput(const std::string& color) {
  return {isatty(STDOUT_FILENO) != 0 ? TextWidth() : kEndless, UsesColour(color, STDOUT_FILENO)};
}

}  // namespace rux::support
