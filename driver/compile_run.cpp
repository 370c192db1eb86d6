#include "driver/compile_run.h"

#include <algorithm>
#include <exception>
#include <functional>
#include <iterator>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "diagnostics/advice.h"
#include "diagnostics/from_messages.h"
#include "diagnostics/include_notes.h"
#include "diagnostics/locator.h"
#include "diagnostics/output.h"
#include "diagnostics/severities.h"
#include "diagnostics/telling.h"
#include "driver/overwriting.h"
#include "driver/raised_error.h"
#include "driver/standard_input.h"
#include "findings/messages.h"
#include "rules/check_script.h"
#include "ruxcomp/compile.h"
#include "sources/script_path.h"
#include "sources/why_not_opened.h"
#include "support/failure.h"

namespace rux::driver {
namespace {

class CompileRun {
 public:
  explicit CompileRun(const CompileOptions& options)
      : options_(options),
        script_(options.script_name()),
        input_(InputOf(options)),
        locator_(script_, input_ ? input_->path() : "") {
    if (options.werror) severities_.RaiseAll();
    for (const std::string& setting : options.warnings) severities_.Set(setting);
  }
  ~CompileRun() { gccCompEnd(); }
  CompileRun(const CompileRun&) = delete;
  CompileRun& operator=(const CompileRun&) = delete;

  support::ExitStatus Run(CompileProduct* product) {
    std::vector<diagnostics::Diagnostic> warnings = rules::CheckScript(locator_.sources());
    sources_ = locator_.sources().files();
    // They are read again in case that there is something to show of them: their memory is better
    // used for the model.
    if (warnings.empty()) locator_.DropSources();
    const std::string& read = input_ ? input_->library_path() : script_;
    Guarded(diagnostics::Phase::kStart, [&] { opened_ = gccCompStart(read) != 0; });
    if (opened_) Guarded(diagnostics::Phase::kParse, [] { gccParse(); });
    if (opened_ && raised_.empty()) {
      Guarded(diagnostics::Phase::kCheck, [&] { accepted_ = gccCheck() != 0; });
    }
    if (input_) input_->NameIn(diagnostics::Messages().messages);
    Add(diagnostics::DiagnosticsFrom(diagnostics::Messages().messages, accepted_));
    if (opened_ && raised_.empty()) Add(std::move(warnings));
    if (accepted_ && !Fails() && product != nullptr) {
      Guarded(diagnostics::Phase::kOutput, [&] { Add(product->Make()); });
    }
    const bool is_done = accepted_ && !Fails();
    TellAll();
    if (RanOutOfMemory()) throw std::bad_alloc();
    if (failure_) throw support::Failure(*failure_);
    if (!opened_) throw CannotRead();
    if (product != nullptr) {
      is_done ? product->Keep(sources_) : product->KeepNone(sources_);
    }
    return is_done ? support::ExitStatus::kDone : support::ExitStatus::kFindings;
  }

 private:
  // Runs a step of which the library may raise an error.
  void Guarded(diagnostics::Phase phase, const std::function<void()>& step) {
    diagnostics::Messages().phase = phase;
    try {
      step();
    } catch (const support::Failure& failure) {
      failure_ = failure;
    } catch (const std::bad_alloc&) {
      throw;  // that is not the script's fault
    } catch (const std::exception& raised) {
      raised_ = DiagnosticsOfRaised(locator_.sources(), phase, raised);
    }
  }

  static std::optional<StandardInput> InputOf(const CompileOptions& options) {
    if (!options.reads_standard_input()) return std::nullopt;
    return std::optional<StandardInput>(std::in_place, options.script_name());
  }

  support::Failure CannotRead() const {
    const std::string path = sources::ToOpenablePath(script_);
    return support::Failure(
        support::ExitStatus::kTrouble,
        "cannot read " + path + ": " + sources::WhyNotOpened(input_ ? input_->path() : path));
  }

  // The reader goes on without what it had no memory for.
  static bool RanOutOfMemory() {
    const std::vector<diagnostics::Message>& messages = diagnostics::Messages().messages;
    return std::any_of(messages.begin(), messages.end(), [](const diagnostics::Message& message) {
      return message.format == findings::Message<findings::MessageId::kOutOfMemory>::kFormat;
    });
  }

  bool Fails() const {
    return !raised_.empty() || diagnostics::Count(diagnostics_, diagnostics::Severity::kError) > 0;
  }

  void Add(std::vector<diagnostics::Diagnostic> diagnostics) {
    severities_.Apply(diagnostics);
    diagnostics_.insert(diagnostics_.end(), std::make_move_iterator(diagnostics.begin()),
                        std::make_move_iterator(diagnostics.end()));
  }

  // The last that is done with the diagnostics.
  void TellAll() {
    Add(std::exchange(raised_, {}));
    for (diagnostics::Diagnostic& diagnostic : diagnostics_) locator_.Locate(diagnostic);
    diagnostics::Advise(locator_, diagnostics_);
    diagnostics::AddNotesOnIncludes(locator_, diagnostics_);
    const diagnostics::TellingOptions& telling = options_.telling;
    diagnostics::Report report =
        diagnostics::ReportOf(sources::ToOpenablePath(script_), std::move(diagnostics_), telling);
    report.is_complete = opened_ && !failure_ && !RanOutOfMemory();
    if (!telling.file.empty()) KeepSources(sources_, {"diagnostics file", telling.file});
    diagnostics::Tell(report, opened_, telling);
  }

  const CompileOptions& options_;
  const std::string script_;  // as the library takes it
  const std::optional<StandardInput> input_;
  diagnostics::Locator locator_;
  sources::SourceFiles sources_;
  diagnostics::Severities severities_;
  bool opened_ = false;
  bool accepted_ = false;
  std::vector<diagnostics::Diagnostic> diagnostics_;
  std::vector<diagnostics::Diagnostic> raised_;
  std::optional<support::Failure> failure_;
};

}  // namespace

support::ExitStatus RunCompile(const CompileOptions& options, CompileProduct* product) {
  return CompileRun(options).Run(product);
}

}  // namespace rux::driver
