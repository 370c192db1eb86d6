#include "driver/compile_options.h"

#include "sources/script_path.h"

namespace rux {

std::string CompileOptions::script_name() const {
  if (!reads_standard_input()) return ToLibraryPath(scripts.front());
  return stdin_name.empty() ? "<stdin>" : ToLibraryPath(stdin_name);
}

}  // namespace rux
