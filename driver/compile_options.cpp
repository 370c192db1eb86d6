#include "driver/compile_options.h"

#include <string>

#include "ruxcomp/language/paths.h"

namespace rux::driver {

std::string CompileOptions::script_name() const {
  if (!reads_standard_input()) return ruxcomp::language::ToLibraryPath(scripts.front());
  return stdin_name.empty() ? "<stdin>" : ruxcomp::language::ToLibraryPath(stdin_name);
}

}  // namespace rux::driver
