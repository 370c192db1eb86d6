#include "tool/diagnostics/diagnostic.h"

#include <algorithm>

namespace rux {

std::size_t Count(const std::vector<Diagnostic>& diagnostics, Severity severity) {
  const auto has_it = [&](const Diagnostic& diagnostic) { return diagnostic.severity == severity; };
  return static_cast<std::size_t>(std::count_if(diagnostics.begin(), diagnostics.end(), has_it));
}

}  // namespace rux
