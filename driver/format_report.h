// What people and programs are shown about formatted scripts.
#ifndef DRIVER_FORMAT_REPORT_H_
#define DRIVER_FORMAT_REPORT_H_

#include <string>
#include <vector>

#include "driver/formatted_script.h"

namespace rux::driver {

// A line about each script that stays as it is.
std::string RefusalsText(const std::vector<FormattedScript>& scripts);

// "17 scripts: 2 formatted, 15 unchanged". `is_done`: they were; otherwise they are to be.
std::string SummaryText(const std::vector<FormattedScript>& scripts, bool is_done);

// The names of scripts that are to be formatted, one a line.
std::string NamesText(const std::vector<FormattedScript>& scripts);

std::string DiffText(const std::vector<FormattedScript>& scripts);

// A document, see docs/fmt.schema.json.
std::string FormatJson(const std::vector<FormattedScript>& scripts);

}  // namespace rux::driver

#endif  // DRIVER_FORMAT_REPORT_H_
