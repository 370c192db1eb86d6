#include <string>
#include <vector>

#include "advice/advice.h"
#include "diagnostics/diagnostic.h"
#include "run/log.h"
#include "run/run.h"
#include "sources/main_scripts.h"
#include "sources/source_set.h"
#include "support/text_file.h"

namespace rux::advice {

Scope::Scope(const sources::SourceSet& sources, const std::string& path)
    : is_limited_(true), file_(sources::FindFile(sources, path)) {}

Scope::Scope(const sources::SourceSet& sources, const std::vector<std::string>& left_out) {
  for (const std::string& path : left_out) left_out_.insert(sources::FindFile(sources, path));
  left_out_.erase(nullptr);
}

bool Scope::Includes(const support::TextFile* file) const {
  if (!is_limited_) return left_out_.count(file) == 0;
  return file != nullptr && file == file_;
}

bool Scope::Includes(const run::Result& result, const run::Finding& finding,
                     diagnostics::Severity severity) {
  if (!is_limited_ && left_out_.empty()) return true;
  const sources::Opening* opening = result.sources.At(finding.origin).opening;
  const bool is_here = Includes(opening == nullptr ? nullptr : opening->file);
  if (!is_here && severity == diagnostics::Severity::kError) ++errors_elsewhere_;
  return is_here;
}

bool Scope::Includes(const diagnostics::Diagnostic& warning) { return Includes(warning.at.file); }

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

}  // namespace rux::advice
