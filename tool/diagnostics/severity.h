// How much a diagnostic stands against a script.
#ifndef TOOL_DIAGNOSTICS_SEVERITY_H_
#define TOOL_DIAGNOSTICS_SEVERITY_H_

#include <string_view>

namespace rux {

enum class Severity { kNote, kWarning, kError };

constexpr std::string_view WordOf(Severity severity) {
  switch (severity) {
    case Severity::kNote:
      return "note";
    case Severity::kWarning:
      return "warning";
    case Severity::kError:
      break;
  }
  return "error";
}

}  // namespace rux

#endif  // TOOL_DIAGNOSTICS_SEVERITY_H_
