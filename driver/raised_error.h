// Errors that the library raises instead of reporting them.
//
// Three texts that are read as a number have no digit to look at: an empty one, a bare "0x", and
// "ARG" with a bare "0x" behind it. The library answers them with an exception that names no place.
#ifndef DRIVER_RAISED_ERROR_H_
#define DRIVER_RAISED_ERROR_H_

#include <exception>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/output.h"
#include "sources/source_view.h"

namespace rux::driver {

// An error for each item that makes the library raise in that phase; when there is none, one for
// the script as a whole with the text of the exception. Not located yet.
std::vector<diagnostics::Diagnostic> DiagnosticsOfRaised(const sources::SourceView& sources,
                                                         diagnostics::Phase phase,
                                                         const std::exception& raised);

}  // namespace rux::driver

#endif  // DRIVER_RAISED_ERROR_H_
