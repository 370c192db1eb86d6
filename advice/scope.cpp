#include <fmt/format.h>

#include <string>
#include <vector>

#include "advice/advice.h"
#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "run/log.h"
#include "run/run.h"
#include "sources/main_scripts.h"
#include "sources/source_set.h"

namespace rux::advice {

Scope::Scope(const sources::SourceSet& sources, const std::string& path)
    : is_limited_(true), file_(sources::FindFile(sources, path)) {}

bool Scope::Includes(const run::Result& result, const run::Finding& finding) {
  if (!is_limited_) return true;
  const sources::Opening* opening = result.sources.At(finding.origin).opening;
  const bool is_here = opening != nullptr && opening->file == file_;
  if (!is_here && finding.row->severity == diagnostics::Severity::kError) ++errors_elsewhere_;
  return is_here;
}

bool Scope::Includes(const diagnostics::Diagnostic& warning) {
  return !is_limited_ || (warning.at.file != nullptr && warning.at.file == file_);
}

void Scope::UsePath(const std::string& part,
                    std::vector<diagnostics::Diagnostic>& diagnostics) const {
  const auto use = [&](diagnostics::Location& at) {
    if (at.file != nullptr && at.file == file_) at.path = part;
  };
  for (diagnostics::Diagnostic& diagnostic : diagnostics) {
    use(diagnostic.at);
    for (diagnostics::Note& note : diagnostic.notes) use(note.at);
  }
}

diagnostics::Diagnostic Scope::NoteOn(const std::string& part, const std::string& main) const {
  diagnostics::Diagnostic note;
  note.row = &kCheckedAsPart;
  note.severity = diagnostics::Severity::kNote;
  note.at.path = part;
  note.text = "checked as part of " + main;
  if (errors_elsewhere_ > 0) {
    note.text += fmt::format(", which has {} error{} in other files", errors_elsewhere_,
                             errors_elsewhere_ == 1 ? "" : "s");
  }
  return note;
}

}  // namespace rux::advice
