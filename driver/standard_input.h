// A script that comes from standard input.
#ifndef DRIVER_STANDARD_INPUT_H_
#define DRIVER_STANDARD_INPUT_H_

#include <string>

namespace rux::driver {

// Reads to the end. `name`: the library's path of the file that the text stands for, whose folder
// is that of its included files. Throws a Failure, also when there is no such folder.
std::string ReadStandardInput(const std::string& name);

}  // namespace rux::driver

#endif  // DRIVER_STANDARD_INPUT_H_
