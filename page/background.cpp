#include "page/background.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <utility>

#include "compiled/debug_meta.h"
#include "diagnostics/severities.h"
#include "driver/compile_options.h"
#include "driver/compile_run.h"
#include "machine/load.h"
#include "machine/source.h"
#include "page/contents.h"
#include "page/sources.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/language/words.h"

namespace rux::page {
namespace {

using ruxcomp::file::Form;

constexpr std::size_t kMostFindings = 1000;  // that a page lists

// All that check and lint report.
driver::Checked CheckScript(const machine::Source& source, const machine::LoadOptions& options) {
  driver::CompileOptions check;
  check.scripts = {source.path};
  check.include_folders = options.include_folders;
  check.projects = options.projects;
  check.purpose = diagnostics::Purpose::kFix;
  check.reporting.max_errors = kMostFindings;
  machine::ReadScriptsOf(source);
  driver::UseProject(check);
  return driver::Check(check);
}

void AddScript(const machine::Source& source, const machine::LoadOptions& options,
               Background& background) {
  driver::Checked checked = CheckScript(source, options);
  background.report = std::move(checked.found.report);
  background.sources = Sources(std::move(checked.found.sources));
}

}  // namespace

Background BackgroundOf(const std::string& name, const machine::LoadOptions& options) {
  const machine::Source source = machine::ReadSource(name);
  const std::filesystem::path path(source.path);
  Background background;
  background.file = path.filename().string();
  background.form = source.form == Form::kNone ? "script" : FormName(source.form);
  if (source.form == Form::kNone) {
    background.folder = path.has_parent_path() ? path.parent_path().string() + '/' : "";
    AddScript(source, options, background);
    return background;
  }
  background.creation_time =
      ruxcomp::language::LoadWord(source.bytes->view().data() + ruxcomp::file::kTimeOffset);
  if (source.form == Form::kDebugMeta) {
    ruxcomp::file::Faults faults;
    background.sources = Sources(compiled::DecodeDebugMeta(source.bytes->view(), faults));
  }
  return background;
}

}  // namespace rux::page
