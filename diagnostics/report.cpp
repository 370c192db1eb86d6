#include "diagnostics/report.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "support/placement.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "support/text_stream.h"

namespace rux::diagnostics {
namespace {

constexpr MachineForm kForms[] = {
    {"gcc", WriteGccText},
    {"json", WriteJsonReport},
    {"sarif", WriteSarifReport},
    {"github", WriteGithubText},
};

}  // namespace

std::string NotShownText(const Report& report) {
  return fmt::format("{} more diagnostic{} not shown; --max-errors 0 shows all", report.not_shown,
                     report.not_shown == 1 ? "" : "s");
}

const MachineForm* FindMachineForm(std::string_view name) {
  const MachineForm* form =
      std::find_if(std::begin(kForms), std::end(kForms),
                   [&](const MachineForm& each) { return each.name == name; });
  return form == std::end(kForms) ? nullptr : form;
}

bool UsesColour(const std::string& color) { return support::UsesColour(color, STDERR_FILENO); }

Report ReportOf(std::string script, Collection& diagnostics) {
  Report report;
  report.script = std::move(script);
  report.errors = diagnostics.errors();
  report.warnings = diagnostics.warnings();
  report.not_shown = diagnostics.not_shown();
  report.suppressed = diagnostics.suppressed();
  report.diagnostics = std::move(diagnostics.kept());
  Excerpts().AddTo(report.diagnostics);
  return report;
}

void WriteReport(const Report& report, bool has_summary, const ReportOptions& options) {
  const MachineForm* form = FindMachineForm(options.format);
  const auto write_form = [&](support::TextStream& out) { form->write(report, out); };
  if (form != nullptr && options.file.empty()) return support::Print(support::PrintOut, write_form);
  if (options.counts != nullptr)
    *options.counts = {report.errors, report.warnings, report.suppressed};
  support::Print(support::PrintError, [&](support::TextStream& out) {
    WriteHumanText(report, UsesColour(options.color), out);
    if (has_summary && options.counts == nullptr) out += SummaryLine(report);
  });
  if (form == nullptr) return;
  const std::string text = support::WrittenText(write_form);
  support::PutInPlace({{options.file, text}});
}

}  // namespace rux::diagnostics
