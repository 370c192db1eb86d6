#include "driver/format_run.h"

#include <cerrno>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "driver/compile_options.h"
#include "driver/compile_run.h"
#include "driver/format_report.h"
#include "driver/formatted_script.h"
#include "driver/same_meta.h"
#include "driver/script_list.h"
#include "format/format.h"
#include "reader/script.h"
#include "reader/source.h"
#include "sources/content.h"
#include "sources/source_file.h"
#include "support/failure.h"
#include "support/placement.h"
#include "support/standard_streams.h"
#include "support/terminal.h"

namespace rux::driver {
namespace {

using support::ExitStatus;

// As the reader finds it: backslashes in the name may be slashes.
struct ReadScript {
  std::string path;
  std::string text;
};

ReadScript ReadFile(const std::string& path) {
  const std::optional<ruxcomp::reader::Source> source = ruxcomp::reader::FindSource(path);
  if (!source) throw support::SystemFailure("cannot read", path);
  if (source->kind != ruxcomp::reader::SourceKind::kFile)
    throw support::Failure(ExitStatus::kTrouble, "cannot format {}: it is not a file", path);
  std::optional<std::string> text =
      ruxcomp::reader::ReadSource(*source, ruxcomp::reader::kLargestScript);
  if (!text) throw support::SystemFailure("cannot read", path);
  if (text->size() > ruxcomp::reader::kLargestScript)
    throw support::SystemFailure("cannot read", path, EFBIG);
  return {source->path, std::move(*text)};
}

class FormatRun {
 public:
  explicit FormatRun(FormatOptions options) : options_(std::move(options)) {}

  ExitStatus Run() {
    const bool is_input = options_.scripts.reads_standard_input();
    if (is_input) {
      const std::string name = options_.scripts.script_name();
      Add(sources::ToOpenablePath(name), ReadStandardInput(name));
    } else {
      for (const std::string& script : options_.scripts.scripts) AddFile(script);
    }
    RefuseOtherMeaning(options_.scripts, scripts_);
    const bool writes = !options_.checks && !options_.diffs;
    if (writes && !is_input) Replace();
    Report(writes, is_input);
    return Status(writes);
  }

 private:
  void AddFile(const std::string& path) {
    try {
      ReadScript script = ReadFile(path);
      Add(script.path, std::move(script.text));
    } catch (const support::Failure& failure) {
      FormattedScript& script = scripts_.emplace_back();
      script.path = path;
      Fail(script, failure);
    }
  }

  void Add(const std::string& path, std::string text) {
    FormattedScript& script = scripts_.emplace_back();
    script.path = path;
    script.is_file = !options_.scripts.reads_standard_input();
    const std::string_view other = sources::WhyNotAScript(text);
    format::Formatted formatted =
        other.empty() ? format::Format(text, {options_.blank_lines}) : format::Formatted{text, {}};
    script.text = std::move(text);
    if (!other.empty()) return script.Refuse(0, std::string(other));
    if (formatted.refusal) {
      return script.Refuse(formatted.refusal->line, std::move(formatted.refusal->reason));
    }
    if (formatted.text == script.text) return;
    script.state = FormatState::kChanged;
    script.formatted = std::move(formatted.text);
  }

  static void Fail(FormattedScript& script, const support::Failure& failure) {
    script.state = FormatState::kUnreadable;
    script.reason = failure.what();
  }

  // Each by itself: one that cannot be written does not keep the others from it.
  void Replace() {
    for (FormattedScript& script : scripts_) {
      if (script.state != FormatState::kChanged) continue;
      try {
        support::PutInPlace({{script.path, script.formatted}});
      } catch (const support::Failure& failure) {
        Fail(script, failure);
      }
    }
  }

  void Report(bool writes, bool is_input) const {
    if (options_.checks && options_.form == "json") return support::PrintOut(FormatJson(scripts_));
    if (options_.checks) support::PrintOut(NamesText(scripts_));
    if (options_.diffs) support::PrintAsIs("the script", DiffText(scripts_), kAdvice);
    if (writes && is_input) support::PrintAsIs("the script", TextOf(scripts_.front()), kAdvice);
    support::PrintError(RefusalsText(scripts_));
    if (!is_input) support::PrintError(SummaryText(scripts_, writes));
  }

  static const std::string& TextOf(const FormattedScript& script) {
    return script.state == FormatState::kChanged ? script.formatted : script.text;
  }

  ExitStatus Status(bool writes) const {
    ExitStatus status = ExitStatus::kDone;
    for (const FormattedScript& script : scripts_) {
      if (script.state == FormatState::kUnreadable) return ExitStatus::kTrouble;
      const bool is_open = script.state == FormatState::kChanged && !writes;
      if (is_open || script.state == FormatState::kRefused) status = ExitStatus::kFindings;
    }
    return status;
  }

  static constexpr char kAdvice[] = "redirect the output";

  const FormatOptions options_;
  std::vector<FormattedScript> scripts_;
};

}  // namespace

support::ExitStatus FormatScripts(FormatOptions options) {
  ExpandAllScripts(options.scripts);
  if (options.form != "human" && !options.checks) {
    throw support::Failure(ExitStatus::kWrongUsage, "--format {} needs --check", options.form);
  }
  ExpectForOne(options.scripts);
  return FormatRun(std::move(options)).Run();
}

}  // namespace rux::driver
