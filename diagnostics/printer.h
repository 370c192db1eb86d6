// Diagnostics for terminals: the form that compilers use and editors jump to.
#ifndef DIAGNOSTICS_PRINTER_H_
#define DIAGNOSTICS_PRINTER_H_

#include <string>

#include "diagnostics/report.h"
#include "support/text_stream.h"

namespace rux::diagnostics {

//   boards/server.rux:12:16: error: [SENSOR] THRESHOLD_FH: hto has not been defined
//   [undefined-word]
//      12 | THRESHOLD_FH = hto
//         |                ^~~
//         = did you mean hot?
//   boards/board.rux:3: note: included from here
//
// and so on.
void WriteHumanText(const Report& report, bool colour, support::TextStream& out);

// "boards/server.rux: 2 errors, 1 warning" with a line feed.
std::string SummaryLine(const Report& report);

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_PRINTER_H_
