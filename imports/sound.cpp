#include "imports/sound.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/report.h"
#include "driver/compile_options.h"
#include "driver/compile_run.h"
#include "findings/message_row.h"
#include "imports/folder.h"
#include "imports/layout.h"
#include "reader/script.h"
#include "reader/texts.h"
#include "settings/json_file.h"
#include "support/failure.h"

namespace rux::imports {
namespace {

bool IsProblem(const diagnostics::Diagnostic& diagnostic) {
  using ruxcomp::findings::Severity;
  return diagnostic.severity == Severity::kError || diagnostic.severity == Severity::kWarning;
}

}  // namespace

void ExpectSound(const std::string& folder, const std::vector<ScriptFile>& files) {
  std::map<std::string, std::string> texts;
  for (const ScriptFile& file : files) texts[PathIn(folder, file.name)] = file.text;
  ruxcomp::reader::Texts::ReplaceFiles([&](const std::string& path) -> std::optional<std::string> {
    const auto found = texts.find(path);
    if (found != texts.end()) return found->second;
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored)) return std::nullopt;
    return settings::ReadTextFile(path, ruxcomp::reader::kLargestScript);
  });
  driver::CompileOptions options;
  options.scripts = {PathIn(folder, kMainScript)};
  const driver::Checked checked = driver::Check(options);
  ruxcomp::reader::Texts::ReplaceFiles(nullptr);
  if (checked.failure)
    throw support::Failure(support::ExitStatus::kTrouble, "{}", *checked.failure);
  for (const diagnostics::Diagnostic& diagnostic : checked.found.report.diagnostics) {
    if (!IsProblem(diagnostic)) continue;
    throw support::Failure(support::ExitStatus::kTrouble,
                           "nothing is written, for the scripts would not be sound: {}: {} [{}]",
                           diagnostics::PlaceText(diagnostic.at), WholeText(diagnostic),
                           diagnostic.row->id);
  }
}

}  // namespace rux::imports
