#include "server/file_report.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "analysis/analysis.h"
#include "analysis/findings.h"
#include "server/finding_json.h"
#include "server/session.h"
#include "workspace/documents.h"

namespace rux::server {
namespace {

// More than a machine has. Several together may have any number.
constexpr std::size_t kMost = 3000;

}  // namespace

FileReport ReportOf(const Session& session, const std::string& whole_name) {
  FileReport report;
  const workspace::Document* document = session.documents.FindFile(whole_name);
  const analysis::File* file = session.analysis.FindFile(whole_name);
  if (document != nullptr) {
    report.uri = document->uri();
    report.version = document->version();
    report.failures = session.analysis.FailuresOf(*document);
    for (const std::string& failure : report.failures) {
      report.diagnostics.push_back(DiagnosticOfFailure(failure));
    }
  } else if (file != nullptr) {
    report.uri = UriOf(session, *file);
  }
  const auto findings = session.analysis.FindingsIn(whole_name);
  const std::size_t shown = std::min(findings.size(), kMost);
  for (std::size_t i = 0; i < shown; ++i) {
    report.diagnostics.push_back(DiagnosticOf(session, findings[i]));
  }
  if (shown < findings.size()) {
    report.diagnostics.push_back(DiagnosticOfRest(findings.size() - shown));
  }
  return report;
}

}  // namespace rux::server
