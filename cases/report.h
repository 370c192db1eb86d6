// The results of test cases, in the forms in which they are reported.
#ifndef CASES_REPORT_H_
#define CASES_REPORT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "cases/case.h"
#include "cases/coverage.h"
#include "cases/run.h"
#include "profile/profile.h"
#include "support/text_stream.h"

namespace rux::cases {

// Of the cases of one file.
struct FileResult {
  CaseFile file;
  profile::Profile profile;
  std::vector<CaseResult> results;
  std::vector<CoveredKind> coverage;

  std::size_t failed() const;
};

struct ReportOptions {
  bool only_failed = false;
  bool has_coverage = false;
  bool has_missing = false;  // what is not covered, thing by thing
};

// Each case by its name; for one that fails, what is not as expected, with the lines to look at.
// Then the coverage.
void WriteText(const std::vector<FileResult>& files, const ReportOptions& options,
               support::TextStream& out);

// docs/test-report.schema.json
void WriteJson(const std::vector<FileResult>& files, const ReportOptions& options,
               support::TextStream& out);

// Forms of diagnostics, in which each case that fails is an error.
void WriteJunit(const std::vector<FileResult>& files, const ReportOptions& options,
                support::TextStream& out);
void WriteSarif(const std::vector<FileResult>& files, const ReportOptions& options,
                support::TextStream& out);

struct Form {
  std::string_view name;
  void (*write)(const std::vector<FileResult>& files, const ReportOptions& options,
                support::TextStream& out);
};
inline constexpr Form kForms[] = {
    {"text", WriteText}, {"json", WriteJson}, {"junit", WriteJunit}, {"sarif", WriteSarif}};

}  // namespace rux::cases

#endif  // CASES_REPORT_H_
