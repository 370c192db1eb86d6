#include "diagnostics/output.h"

#include <cstdarg>
#include <cstdio>
#include <utility>

#include "ruxcomp/output.h"

namespace rux::diagnostics {
namespace {

// Hands out a printf format in pieces: literal(text) for what stands as it is, conversion(letter)
// for "%s" and its like. Stops, and answers false, when `conversion` does.
template <class Literal, class Conversion>
bool WalkFormat(std::string_view format, Literal literal, Conversion conversion) {
  while (!format.empty()) {
    const std::size_t percent = format.find('%');
    literal(format.substr(0, percent));
    if (percent == std::string_view::npos) return true;
    const char letter = percent + 1 < format.size() ? format[percent + 1] : '\0';
    if (letter == '%') {
      literal("%");
    } else if (!conversion(letter)) {
      return false;
    }
    format.remove_prefix(percent + 2);
  }
  return true;
}

struct ArgumentList {
  va_list list;
};

// The arguments that the format calls for; false when it calls for other ones than texts and
// unsigned numbers.
bool DecodeArguments(const char* format, ArgumentList& list, std::vector<Argument>& arguments) {
  const auto ignore_literal = [](std::string_view) {};
  return WalkFormat(format, ignore_literal, [&](char letter) {
    if (letter == 's') {
      const char* text = va_arg(list.list, const char*);
      arguments.emplace_back(std::string(text == nullptr ? "(null)" : text));
    } else if (letter == 'u') {
      arguments.emplace_back(std::uint32_t{va_arg(list.list, unsigned int)});
    }
    return letter == 's' || letter == 'u';
  });
}

// For formats that DecodeArguments does not take: the text in full as the one argument.
[[gnu::format(printf, 3, 0)]] Message PrintedMessage(Phase phase, unsigned int size,
                                                     const char* format, va_list list) {
  std::string text(size, '\0');
  std::vsnprintf(text.data(), text.size(), format, list);
  return {phase, "%s", {std::string(text.c_str())}};
}

}  // namespace

MessageLog& Messages() {
  // Never destroyed: the library may speak while it is unloaded.
  static auto* log = new MessageLog;
  return *log;
}

std::string FormatText(std::string_view format, const std::vector<Argument>& arguments,
                       std::size_t first) {
  std::string text;
  WalkFormat(
      format, [&](std::string_view literal) { text += literal; },
      [&](char) {
        if (first >= arguments.size()) return false;
        const Argument& argument = arguments[first++];
        const auto* string = std::get_if<std::string>(&argument);
        text += string != nullptr ? *string : std::to_string(std::get<std::uint32_t>(argument));
        return true;
      });
  return text;
}

}  // namespace rux::diagnostics

extern "C" __attribute__((visibility("default"))) void Output(unsigned int size, const char* format,
                                                              ...) {
  rux::diagnostics::MessageLog& log = rux::diagnostics::Messages();
  rux::diagnostics::Message message{log.phase, format, {}};
  rux::diagnostics::ArgumentList list;
  va_start(list.list, format);
  const bool decoded = rux::diagnostics::DecodeArguments(format, list, message.arguments);
  va_end(list.list);
  if (!decoded) {
    va_list again;
    va_start(again, format);
    message = rux::diagnostics::PrintedMessage(log.phase, size, format, again);
    va_end(again);
  }
  log.messages.push_back(std::move(message));
}
