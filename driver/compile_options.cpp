#include "driver/compile_options.h"

#include "sources/script_path.h"

namespace rux::driver {

std::string CompileOptions::script_name() const {
  if (!reads_standard_input()) return sources::ToLibraryPath(scripts.front());
  return stdin_name.empty() ? "<stdin>" : sources::ToLibraryPath(stdin_name);
}

}  // namespace rux::driver
