#include "diagnostics/telling.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/excerpts.h"
#include "diagnostics/printer.h"
#include "diagnostics/report.h"
#include "support/placement.h"
#include "support/standard_streams.h"

namespace rux::diagnostics {
namespace {

std::string_view Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

// Where to cut the list off: behind the last error that is allowed.
std::vector<Diagnostic>::iterator EndOfShown(std::vector<Diagnostic>& diagnostics,
                                             std::size_t max_errors) {
  std::size_t errors = 0;
  const auto last =
      std::find_if(diagnostics.begin(), diagnostics.end(), [&](const Diagnostic& diagnostic) {
        return diagnostic.severity == Severity::kError && ++errors == max_errors;
      });
  return last == diagnostics.end() ? last : last + 1;
}

}  // namespace

bool UsesColour(const std::string& color) {
  if (color != "auto") return color == "always";
  return isatty(STDERR_FILENO) != 0 && Environment("NO_COLOR").empty() &&
         Environment("TERM") != "dumb";
}

Report ReportOf(std::string script, std::vector<Diagnostic> diagnostics,
                const TellingOptions& options) {
  Report report;
  report.script = std::move(script);
  report.errors = Count(diagnostics, Severity::kError);
  report.warnings = Count(diagnostics, Severity::kWarning);
  if (!options.verbose) {
    diagnostics.erase(std::remove_if(diagnostics.begin(), diagnostics.end(),
                                     [](const Diagnostic& each) { return each.only_verbose; }),
                      diagnostics.end());
  }
  diagnostics.erase(EndOfShown(diagnostics, options.max_errors), diagnostics.end());
  report.not_shown = report.errors + report.warnings - Count(diagnostics, Severity::kError) -
                     Count(diagnostics, Severity::kWarning);
  report.diagnostics = std::move(diagnostics);
  Excerpts().AddTo(report.diagnostics);
  return report;
}

void Tell(const Report& report, bool has_summary, const TellingOptions& options) {
  const MachineForm* form = FindMachineForm(options.format);
  if (form != nullptr && options.file.empty()) return support::PrintOut(form->text(report));
  std::string text = HumanText(report, UsesColour(options.color));
  if (options.counts != nullptr) *options.counts = {report.errors, report.warnings};
  if (has_summary && options.counts == nullptr) text += SummaryLine(report);
  support::PrintError(text);
  if (form != nullptr) support::PutInPlace({{options.file, form->text(report)}});
}

}  // namespace rux::diagnostics
