// Tables of test cases, in CSV.
#ifndef CASES_CASE_TABLE_H_
#define CASES_CASE_TABLE_H_

#include <string>
#include <string_view>
#include <vector>

#include "cases/case.h"

namespace rux::cases {

// A case for each line below the first. Throws a Failure that names the line.
std::vector<Case> ParseCaseTable(const std::string& path, std::string_view text);

}  // namespace rux::cases

#endif  // CASES_CASE_TABLE_H_
