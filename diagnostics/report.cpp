#include "diagnostics/report.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "diagnostics/machine_form.h"
#include "support/number_text.h"
#include "support/placement.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "support/text_stream.h"

namespace rux::diagnostics {
std::string NotShown(std::size_t count) {
  return support::CountText(count, "more diagnostic") + " not shown";
}

std::string NotShownText(std::size_t count) {
  return fmt::format("{} (--all shows {})", NotShown(count), count == 1 ? "it" : "them");
}

void SortByCount(std::vector<MessageCount>& by_message) {
  const auto key_of = [](const MessageCount& count) {
    return std::tuple(static_cast<std::size_t>(-1) - count.all, count.row->id);
  };
  std::sort(by_message.begin(), by_message.end(),
            [&](const auto& a, const auto& b) { return key_of(a) < key_of(b); });
}

bool UsesColour(const std::string& color) { return support::UsesColour(color, STDERR_FILENO); }

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

namespace {

std::vector<MessageCount> CountByMessage(const Collection& diagnostics,
                                         const std::vector<Diagnostic>& kept) {
  std::map<const MessageRow*, std::size_t> kept_of;
  for (const Diagnostic& diagnostic : kept) ++kept_of[diagnostic.row];
  std::vector<MessageCount> counts;
  diagnostics.ForEachCount([&](const MessageRow& row, std::size_t all) {
    if (row.severity != Severity::kNote) counts.push_back({&row, all, kept_of[&row]});
  });
  for (const auto& [row, count] : kept_of) {
    if (row->severity == Severity::kNote) counts.push_back({row, 0, count});
  }
  SortByCount(counts);
  return counts;
}

}  // namespace

Report ReportOf(std::string script, Collection& diagnostics,
                const std::vector<std::string>& files) {
  Report report;
  report.script = std::move(script);
  report.errors = diagnostics.errors();
  report.warnings = diagnostics.warnings();
  report.suppressed = diagnostics.suppressed();
  report.in_baseline = diagnostics.in_baseline();
  Excerpts().AddTo(diagnostics.kept());
  SortByPlace(files, diagnostics.kept());
  report.diagnostics = diagnostics.TakeShown();
  report.not_shown = diagnostics.not_shown();
  SortByPlace(files, report.diagnostics);
  report.by_message = CountByMessage(diagnostics, report.diagnostics);
  return report;
}

namespace {

void SetCounts(const Report& report, Counts& counts) {
  counts.errors = report.errors;
  counts.warnings = report.warnings;
  counts.not_shown = report.not_shown;
  counts.suppressed = report.suppressed;
  counts.in_baseline = report.in_baseline;
  counts.is_complete = report.is_complete;
  std::copy(report.by_message.begin(), report.by_message.end(), counts.by_message);
}

void WriteForPeople(const Report& report, bool has_summary, const ReportOptions& options) {
  support::Print(support::PrintError, [&](support::TextStream& out) {
    WriteHumanText(report, {UsesColour(options.color), !options.shows_all()}, out);
    if (!has_summary || options.counts != nullptr) return;
    if (!options.shows_all() && IsLong(report.by_message)) out += MessageTable(report.by_message);
    out += SummaryLine(report);
  });
}

}  // namespace

void WriteReport(const Report& report, bool has_summary, const ReportOptions& options) {
  const MachineForm* form = FindMachineForm(options.format);
  if (options.counts != nullptr) SetCounts(report, *options.counts);
  if (form == nullptr || !options.file.empty()) WriteForPeople(report, has_summary, options);
  if (form == nullptr) return;
  WriteForm* const write = options.is_piece ? form->write_piece : form->write;
  const auto write_form = [&](support::TextStream& out) { write(report, out); };
  if (options.is_piece || options.file.empty()) {
    support::Print(support::PrintOut, write_form);
  } else {
    const std::string text = support::WrittenText(write_form);
    if (options.makes_folder) support::MakeFolderOf(options.file);
    support::PutInPlace({{options.file, text}});
  }
  if (options.counts != nullptr) options.counts->is_written = true;
}

}  // namespace rux::diagnostics
