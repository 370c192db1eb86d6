// Whether machines compile to the same meta files before and after their scripts are formatted.
#ifndef DRIVER_SAME_META_H_
#define DRIVER_SAME_META_H_

#include <vector>

#include "driver/compile_options.h"
#include "driver/formatted_script.h"

namespace rux::driver {

// Refuses the changed scripts of each machine that cannot be compiled, or that would compile to a
// meta file with other bytes, but for the time of creation. Each script is compiled as the main
// script that it is, or through those that include it, with the texts in memory in place of the
// files. `options`: include folders and projects. Throws a Failure.
void RefuseOtherMeaning(const CompileOptions& options, std::vector<FormattedScript>& scripts);

}  // namespace rux::driver

#endif  // DRIVER_SAME_META_H_
