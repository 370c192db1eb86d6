// The device tree compiler.
#ifndef IMPORTS_FORMATS_DTC_H_
#define IMPORTS_FORMATS_DTC_H_

#include <string>
#include <string_view>

namespace rux::imports {

// The text of a dts file, compiled; files that it includes are looked for next to `path`.
// The program has 20 seconds and one gigabyte. Throws a Failure with what it reports.
std::string CompileDeviceTree(const std::string& path, std::string_view text);

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_DTC_H_
