// What a build tool needs to know to make compiled files again when it is time.
#ifndef DRIVER_DEPFILE_H_
#define DRIVER_DEPFILE_H_

#include <string>
#include <vector>

namespace rux::driver {

// A rule in the syntax that make and ninja share: the targets, and each of the prerequisites once,
// in order. Each prerequisite is also a target of its own, without a recipe, so that make goes on
// when one is not there any more.
//
// Throws a Failure that names `path`, the file that the rule is for, when one of the other names
// cannot be written so that both tools read it as it is.
std::string DepfileText(const std::string& path, const std::vector<std::string>& targets,
                        const std::vector<std::string>& prerequisites);

}  // namespace rux::driver

#endif  // DRIVER_DEPFILE_H_
