#include "diagnostics/advice.h"

namespace rux::diagnostics {

void Advise(Locator& locator, std::vector<Diagnostic>& diagnostics) {
  std::size_t advised = 0;
  std::size_t compared = 0;
  for (Diagnostic& diagnostic : diagnostics) {
    if (diagnostic.severity == Severity::kNote) continue;
    if (advised++ == kMostAdvised) return;
    if (compared < kMostCompared) compared += AddSuggestion(locator, diagnostic);
    AddOtherPlace(locator, diagnostic);
    AddHint(diagnostic);
  }
}

}  // namespace rux::diagnostics
