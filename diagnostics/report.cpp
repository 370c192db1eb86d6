#include "diagnostics/report.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

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

namespace {

// Sorts diagnostics with excerpts. Those of one place stay in their order.
void SortByPlace(const std::vector<std::string>& files, std::vector<Diagnostic>& diagnostics) {
  std::map<std::string_view, std::size_t> ranks;
  for (const std::string& file : files) ranks.try_emplace(file, ranks.size());
  const auto key_of = [&](const Diagnostic& diagnostic) {
    const Location& at = diagnostic.at;
    const auto found = ranks.find(at.path);
    const std::size_t rank = found == ranks.end() ? ranks.size() : found->second;
    const std::size_t column = at.excerpt ? at.excerpt->first_column : 0;
    return std::tuple(at.path.empty(), at.line() == 0, rank, at.line(), column);
  };
  std::stable_sort(diagnostics.begin(), diagnostics.end(),
                   [&](const Diagnostic& a, const Diagnostic& b) { return key_of(a) < key_of(b); });
}

}  // namespace

Report ReportOf(std::string script, Collection& diagnostics,
                const std::vector<std::string>& files) {
  Report report;
  report.script = std::move(script);
  report.errors = diagnostics.errors();
  report.warnings = diagnostics.warnings();
  report.not_shown = diagnostics.not_shown();
  report.suppressed = diagnostics.suppressed();
  report.diagnostics = std::move(diagnostics.kept());
  Excerpts().AddTo(report.diagnostics);
  SortByPlace(files, report.diagnostics);
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
