#include "driver/common_findings.h"

#include <fmt/format.h>

#include <string>
#include <string_view>
#include <vector>

#include "advice/allowances.h"
#include "diagnostics/diagnostic.h"
#include "driver/listed.h"
#include "findings/message_row.h"

namespace rux::driver {
namespace {

constexpr std::string_view kUnusedPrefix = "unused-";

}  // namespace

std::string KeyOf(const diagnostics::Diagnostic& diagnostic) {
  const diagnostics::Location& at = diagnostic.at;
  return fmt::format("{}\n{}\n{}\n{}\n{}\n{}\n{}", diagnostic.row->id, WordOf(diagnostic.severity),
                     diagnostic.section.value_or("\n"), diagnostic.entry.value_or("\n"), at.line(),
                     at.excerpt ? at.excerpt->first_column : 0, diagnostic.text);
}

// By its id.
bool IsAboutUnused(const diagnostics::MessageRow& row) {
  return std::string_view(row.id).substr(0, kUnusedPrefix.size()) == kUnusedPrefix;
}

bool IsLeftToParts(const diagnostics::MessageRow& row) { return &row == &advice::kUnusedAllow; }

std::string FoundOnlyIn(const std::vector<std::string>& mains) {
  return "found only as part of " + Listed(mains, kMostNamed);
}

}  // namespace rux::driver
