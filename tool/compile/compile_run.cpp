#include "tool/compile/compile_run.h"

#include <algorithm>
#include <exception>
#include <functional>
#include <iterator>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "reader/messages.h"
#include "ruxcomp/compile.h"
#include "tool/compile/overwriting.h"
#include "tool/compile/raised_error.h"
#include "tool/compile/script_path.h"
#include "tool/compile/standard_input.h"
#include "tool/compile/telling.h"
#include "tool/compile/why_not_opened.h"
#include "tool/diagnostics/advice.h"
#include "tool/diagnostics/from_messages.h"
#include "tool/diagnostics/include_notes.h"
#include "tool/diagnostics/locator.h"
#include "tool/diagnostics/severities.h"
#include "tool/failure.h"
#include "tool/output.h"
#include "tool/traps/traps.h"

namespace rux {
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

  ExitStatus Run(CompileProduct* product) {
    std::vector<Diagnostic> traps = FindTraps(locator_.sources());
    sources_ = locator_.sources().files();
    // They are read again in case that there is something to show of them: their memory is better
    // used for the model.
    if (traps.empty()) locator_.DropSources();
    const std::string& read = input_ ? input_->library_path() : script_;
    Guarded(Phase::kStart, [&] { opened_ = gccCompStart(read) != 0; });
    if (opened_) Guarded(Phase::kParse, [] { gccParse(); });
    if (opened_ && raised_.empty()) {
      Guarded(Phase::kCheck, [&] { accepted_ = gccCheck() != 0; });
    }
    if (input_) input_->NameIn(Messages().messages);
    Add(DiagnosticsFrom(Messages().messages, accepted_));
    if (opened_ && raised_.empty()) Add(std::move(traps));
    if (accepted_ && !Fails() && product != nullptr) {
      Guarded(Phase::kOutput, [&] { Add(product->Make()); });
    }
    const bool is_done = accepted_ && !Fails();
    TellAll();
    if (RanOutOfMemory()) throw std::bad_alloc();
    if (failure_) throw Failure(*failure_);
    if (!opened_) throw CannotRead();
    if (product != nullptr) {
      is_done ? product->Keep(sources_) : product->KeepNone(sources_);
    }
    return is_done ? ExitStatus::kDone : ExitStatus::kFindings;
  }

 private:
  // Runs a step of which the library may raise an error.
  void Guarded(Phase phase, const std::function<void()>& step) {
    Messages().phase = phase;
    try {
      step();
    } catch (const Failure& failure) {
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

  Failure CannotRead() const {
    const std::string path = ToOpenablePath(script_);
    return Failure(ExitStatus::kTrouble,
                   "cannot read " + path + ": " + WhyNotOpened(input_ ? input_->path() : path));
  }

  // The reader goes on without what it had no memory for.
  static bool RanOutOfMemory() {
    const std::vector<Message>& messages = Messages().messages;
    return std::any_of(messages.begin(), messages.end(), [](const Message& message) {
      return message.format == reader::kFormat<reader::MessageId::kOutOfMemory>;
    });
  }

  bool Fails() const { return !raised_.empty() || Count(diagnostics_, Severity::kError) > 0; }

  void Add(std::vector<Diagnostic> diagnostics) {
    severities_.Apply(diagnostics);
    diagnostics_.insert(diagnostics_.end(), std::make_move_iterator(diagnostics.begin()),
                        std::make_move_iterator(diagnostics.end()));
  }

  // The last that is done with the diagnostics.
  void TellAll() {
    Add(std::exchange(raised_, {}));
    for (Diagnostic& diagnostic : diagnostics_) locator_.Locate(diagnostic);
    Advise(locator_, diagnostics_);
    AddNotesOnIncludes(locator_, diagnostics_);
    const TellingOptions& telling = options_.telling;
    Report report = ReportOf(ToOpenablePath(script_), std::move(diagnostics_), telling);
    report.is_complete = opened_ && !failure_ && !RanOutOfMemory();
    if (!telling.file.empty()) KeepSources(sources_, {"diagnostics file", telling.file});
    Tell(report, opened_, telling);
  }

  const CompileOptions& options_;
  const std::string script_;  // as the library takes it
  const std::optional<StandardInput> input_;
  Locator locator_;
  SourceFiles sources_;
  Severities severities_;
  bool opened_ = false;
  bool accepted_ = false;
  std::vector<Diagnostic> diagnostics_;
  std::vector<Diagnostic> raised_;
  std::optional<Failure> failure_;
};

}  // namespace

ExitStatus RunCompile(const CompileOptions& options, CompileProduct* product) {
  return CompileRun(options).Run(product);
}

}  // namespace rux
