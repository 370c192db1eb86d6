// Sending messages to the host's Output.
//
// A message is a constant format (the messages.h of each folder); the reporters put the place in
// front of the message's own arguments. The format is a template argument so that the compiler
// checks every argument against it.
#ifndef FRONTEND_REPORT_H_
#define FRONTEND_REPORT_H_

#include <string>

#include "frontend/obj.h"
#include "ruxcomp/output.h"

namespace report_detail {
inline const char* Argument(const std::string& text) { return text.c_str(); }
inline std::uint32_t Argument(std::uint32_t number) { return number; }
}  // namespace report_detail

// Hosts read the first argument of Output as the size of a text buffer; it never varies.
inline constexpr unsigned int kOutputSize = 2048;

template <const auto& Format, class... Arguments>
void Report(const Arguments&... arguments) {
  Output(kOutputSize, Format, report_detail::Argument(arguments)...);
}

// Place: base name and line of a section or an entry.
template <const auto& Format, class... Arguments>
void ReportAt(const CRUXObj& place, const Arguments&... arguments) {
  Report<Format>(place.GetFile(0), place.line, arguments...);
}

// Place: base name and line of the entry, then the names of its section and of the entry itself.
template <const auto& Format, class... Arguments>
void ReportEntry(const CRUXObj& entry, const CRUXObj& section, const Arguments&... arguments) {
  ReportAt<Format>(entry, section.name, entry.name, arguments...);
}

#endif  // FRONTEND_REPORT_H_
