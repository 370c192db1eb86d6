// How much a diagnostic stands against a script.
#ifndef DIAGNOSTICS_SEVERITY_H_
#define DIAGNOSTICS_SEVERITY_H_

#include <string_view>

namespace rux::diagnostics {

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

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_SEVERITY_H_
