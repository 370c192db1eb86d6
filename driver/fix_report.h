// What people and programs are shown about fixed scripts.
#ifndef DRIVER_FIX_REPORT_H_
#define DRIVER_FIX_REPORT_H_

#include <string>
#include <vector>

#include "driver/fixed_script.h"

namespace rux::driver {

// A line about each fix.
std::string FixesText(const std::vector<FixedScript>& scripts);

// A line about each script that stays as it is.
std::string RefusalsText(const std::vector<FixedScript>& scripts);

// "3 fixes in 2 files". `is_done`: they were made; otherwise they are to be.
std::string SummaryText(const std::vector<FixedScript>& scripts, bool is_done);

std::string DiffText(const std::vector<FixedScript>& scripts);

// A document, see docs/fix.schema.json.
std::string FixesJson(const std::vector<FixedScript>& scripts, bool is_done);

}  // namespace rux::driver

#endif  // DRIVER_FIX_REPORT_H_
