#include "driver/part_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "advice/advice.h"
#include "diagnostics/diagnostic.h"
#include "diagnostics/report.h"
#include "driver/common_findings.h"
#include "driver/listed.h"
#include "findings/message_row.h"
#include "support/number_text.h"

namespace rux::driver {
namespace {

using diagnostics::Diagnostic;
using diagnostics::Report;
using diagnostics::Severity;

std::size_t CountKept(const Report& report, Severity severity) {
  const auto count =
      std::count_if(report.diagnostics.begin(), report.diagnostics.end(),
                    [&](const Diagnostic& each) { return each.severity == severity; });
  return static_cast<std::size_t>(count);
}

std::string ErrorsIn(std::size_t errors, const char* files) {
  return fmt::format("{} in other {}", support::CountText(errors, "error"), files);
}

std::string ErrorsElsewhere(std::size_t errors) { return ErrorsIn(errors, "files"); }

Diagnostic NoteOn(const std::string& script) {
  Diagnostic note;
  note.row = &advice::kCheckedAsPart;
  note.severity = Severity::kNote;
  note.at.path = script;
  return note;
}

void Raise(std::size_t& most, std::size_t number) { most = std::max(most, number); }

}  // namespace

Diagnostic NoteOnErrorsInParts(const std::string& main, std::size_t errors) {
  Diagnostic note = NoteOn(main);
  note.text = "has " + ErrorsIn(errors, "scripts of this run");
  return note;
}

void PartReport::Add(PartFindings found) {
  if (shows_ == Shows::kAll) AddNumbers(found.report);
  errors_elsewhere_.push_back(found.errors_elsewhere);
  const std::size_t known = findings_.all().size();
  findings_.BeginMachine(found.main);
  for (Diagnostic& diagnostic : found.report.diagnostics) {
    const std::string key = diagnostic.at.path + '\n' + KeyOf(diagnostic);
    findings_.Add(key, std::move(diagnostic));
  }
  if (findings_.all().size() > known) sources_.push_back(std::move(found.sources));
}

void PartReport::AddNumbers(const Report& report) {
  Raise(all_.errors, report.errors - CountKept(report, Severity::kError));
  Raise(all_.warnings, report.warnings - CountKept(report, Severity::kWarning));
  Raise(all_.not_shown, report.not_shown);
  Raise(all_.suppressed, report.suppressed);
  Raise(all_.in_baseline, report.in_baseline);
  all_.is_complete = all_.is_complete && report.is_complete;
  for (const diagnostics::MessageCount& count : report.by_message) {
    if (count.all > count.kept) Raise(left_out_[count.row], count.all - count.kept);
  }
}

Report PartReport::Merged() {
  all_.script = part_;
  for (Common& common : findings_.all()) {
    Diagnostic& diagnostic = common.finding;
    const bool is_in_all = findings_.IsInAll(common);
    if (IsAboutUnused(*diagnostic.row) && !is_in_all) continue;
    if (shows_ == Shows::kCommon && !IsLeftToParts(*diagnostic.row)) continue;
    if (diagnostic.severity != Severity::kNote && !is_in_all && all_.not_shown == 0) {
      diagnostic.notes.push_back({FoundOnlyIn(common.mains), {}});
    }
    all_.diagnostics.push_back(std::move(diagnostic));
  }
  if (shows_ == Shows::kAll) all_.diagnostics.push_back(NoteOnMachines());
  diagnostics::SortByPlace({part_}, all_.diagnostics);
  CountAll();
  return std::move(all_);
}

void PartReport::CountAll() {
  all_.errors += CountKept(all_, Severity::kError);
  all_.warnings += CountKept(all_, Severity::kWarning);
  std::map<const diagnostics::MessageRow*, std::size_t> kept;
  for (const Diagnostic& diagnostic : all_.diagnostics) ++kept[diagnostic.row];
  for (const auto& [row, count] : left_out_) kept.try_emplace(row, 0);
  for (const auto& [row, count] : kept) {
    const bool is_note = row->severity == Severity::kNote;
    all_.by_message.push_back({row, is_note ? 0 : count + left_out_[row], count});
  }
  diagnostics::SortByCount(all_.by_message);
}

Diagnostic PartReport::NoteOnMachines() const {
  Diagnostic note = NoteOn(part_);
  const std::vector<std::string>& mains = findings_.mains();
  const bool is_one = mains.size() == 1;
  std::vector<std::string> machines;
  for (std::size_t i = 0; i < mains.size(); ++i) {
    const std::size_t errors = errors_elsewhere_[i];
    std::string& machine = machines.emplace_back(mains[i]);
    if (errors == 0) continue;
    machine += is_one ? ", which has " + ErrorsElsewhere(errors)
                      : fmt::format(" ({})", ErrorsElsewhere(errors));
  }
  note.text = "checked as part of ";
  if (!is_one) note.text += fmt::format("{} machines: ", machines.size());
  note.text += Listed(machines, kMostNamed);
  return note;
}

}  // namespace rux::driver
