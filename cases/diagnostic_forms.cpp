// The results of test cases in the forms of diagnostics.
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cases/report.h"
#include "cases/run.h"
#include "diagnostics/diagnostic.h"
#include "diagnostics/machine_form.h"
#include "diagnostics/report.h"
#include "findings/message_row.h"
#include "machine/place.h"
#include "profile/profile.h"
#include "support/text_stream.h"

namespace rux::cases {
namespace {

using ruxcomp::findings::Level;
using ruxcomp::findings::MessageRow;
using ruxcomp::findings::Severity;

constexpr MessageRow kFailedCase = {"",
                                    "failed-case",
                                    Level::kError,
                                    "a test case is not as expected",
                                    "the values of a machine under a profile differ from what a "
                                    "case of rux test expects",
                                    "",
                                    ""};

diagnostics::Location LocationOf(const std::optional<machine::Place>& place) {
  if (!place) return {};
  return {place->File(), place->line};
}

diagnostics::Diagnostic DiagnosticOf(const CaseResult& result) {
  const Mismatch& first = result.mismatches.front();
  diagnostics::Diagnostic diagnostic;
  diagnostic.row = &kFailedCase;
  diagnostic.severity = Severity::kError;
  diagnostic.text = result.source->name + ": " + first.text;
  diagnostic.test = result.source->name;
  diagnostic.at = {result.source->file, first.line};
  for (const Mismatch& mismatch : result.mismatches) {
    if (&mismatch != &first)
      diagnostic.notes.push_back({mismatch.text, {result.source->file, mismatch.line}});
    for (const Remark& remark : mismatch.remarks)
      diagnostic.notes.push_back({remark.text, LocationOf(remark.place)});
  }
  return diagnostic;
}

// Of one file, or of all of them without their diagnostics.
diagnostics::Report ReportOf(const std::string& path, const std::string& profile,
                             std::size_t failed) {
  diagnostics::Report report;
  report.properties = {{"profile", profile}};
  report.script = path;
  report.errors = failed;
  if (failed > 0) report.by_message = {{&kFailedCase, failed, failed}};
  return report;
}

void WriteForms(const std::vector<FileResult>& files, diagnostics::WriteForm* write_piece,
                diagnostics::WriteMany* write_many, support::TextStream& out) {
  std::size_t all_failed = 0;
  std::string profiles;
  diagnostics::Pieces pieces;
  pieces.add_all = [&](const std::function<void(std::string_view)>& add) {
    for (const FileResult& file : files) {
      const std::string profile = profile::NameWithHash(file.profile);
      diagnostics::Report report = ReportOf(file.file.path, profile, file.failed());
      if (profiles.find(profile) == std::string::npos)
        profiles += (profiles.empty() ? "" : ", ") + profile;
      all_failed += file.failed();
      for (const CaseResult& result : file.results) {
        if (result.passes()) {
          report.passed.push_back(result.source->name);
        } else {
          report.diagnostics.push_back(DiagnosticOf(result));
        }
      }
      add(support::WrittenText([&](support::TextStream& piece) { write_piece(report, piece); }));
    }
  };
  pieces.total = [&] { return ReportOf("", profiles, all_failed); };
  write_many(pieces, out);
}

}  // namespace

void WriteJunit(const std::vector<FileResult>& files, const ReportOptions&,
                support::TextStream& out) {
  WriteForms(files, diagnostics::WriteJunitPiece, diagnostics::WriteJunitReports, out);
}

void WriteSarif(const std::vector<FileResult>& files, const ReportOptions&,
                support::TextStream& out) {
  WriteForms(files, diagnostics::WriteSarifPiece, diagnostics::WriteSarifReports, out);
}

}  // namespace rux::cases
