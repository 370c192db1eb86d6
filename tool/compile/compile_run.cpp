#include "tool/compile/compile_run.h"

#include <malloc.h>
#include <unistd.h>

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
#include "tool/command.h"
#include "tool/compile/raised_error.h"
#include "tool/compile/script_path.h"
#include "tool/compile/why_not_opened.h"
#include "tool/diagnostics/advice.h"
#include "tool/diagnostics/from_messages.h"
#include "tool/diagnostics/include_notes.h"
#include "tool/diagnostics/locator.h"
#include "tool/diagnostics/printer.h"
#include "tool/failure.h"
#include "tool/output.h"
#include "tool/standard_streams.h"

namespace rux {
namespace {

class CompileRun {
 public:
  explicit CompileRun(const CompileOptions& options)
      : options_(options), script_(ToLibraryPath(options.script)), locator_(script_) {}
  ~CompileRun() { gccCompEnd(); }
  CompileRun(const CompileRun&) = delete;
  CompileRun& operator=(const CompileRun&) = delete;

  ExitStatus Run(CompileProduct* product) {
    Guarded(Phase::kStart, [&] { opened_ = gccCompStart(script_) != 0; });
    if (opened_) Guarded(Phase::kParse, [] { gccParse(); });
    if (opened_ && raised_.empty()) {
      Guarded(Phase::kCheck, [&] { accepted_ = gccCheck() != 0; });
    }
    diagnostics_ = DiagnosticsFrom(Messages().messages, accepted_);
    if (accepted_ && !Fails() && product != nullptr) {
      Guarded(Phase::kOutput, [&] { Add(product->Make()); });
    }
    // The model is not needed any more; the sources, which are read again, may take its memory.
    gccCompEnd();
    malloc_trim(0);
    Report();
    if (RanOutOfMemory()) throw std::bad_alloc();
    if (failure_) throw Failure(*failure_);
    if (!opened_) throw CannotRead(ToOpenablePath(script_));
    if (Fails() || !accepted_) return ExitStatus::kFindings;
    if (product != nullptr) product->Keep(locator_.sources());
    return ExitStatus::kDone;
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

  static Failure CannotRead(const std::string& path) {
    return Failure(ExitStatus::kTrouble, "cannot read " + path + ": " + WhyNotOpened(path));
  }

  // The reader goes on without what it had no memory for.
  static bool RanOutOfMemory() {
    const std::vector<Message>& messages = Messages().messages;
    return std::any_of(messages.begin(), messages.end(), [](const Message& message) {
      return message.format == reader::kOutOfMemory;
    });
  }

  bool Fails() const {
    return !raised_.empty() || Count(diagnostics_, Severity::kError) > 0 ||
           (options_.werror && Count(diagnostics_, Severity::kWarning) > 0);
  }

  void Add(std::vector<Diagnostic> diagnostics) {
    diagnostics_.insert(diagnostics_.end(), std::make_move_iterator(diagnostics.begin()),
                        std::make_move_iterator(diagnostics.end()));
  }

  void Report() {
    Add(std::exchange(raised_, {}));
    for (Diagnostic& diagnostic : diagnostics_) locator_.Locate(diagnostic);
    Advise(locator_, diagnostics_);
    AddNotesOnIncludes(locator_, diagnostics_);
    const PrintOptions print{isatty(STDERR_FILENO) != 0, options_.verbose};
    std::string text = PrintedDiagnostics(diagnostics_, print);
    if (opened_) text += SummaryLine(ToOpenablePath(script_), diagnostics_);
    PrintError(text);
  }

  const CompileOptions& options_;
  const std::string script_;  // as the library takes it
  Locator locator_;
  bool opened_ = false;
  bool accepted_ = false;
  std::vector<Diagnostic> diagnostics_;
  std::vector<Diagnostic> raised_;
  std::optional<Failure> failure_;
};

}  // namespace

void AddCompileOptions(CLI::App& command, CompileOptions& options) {
  command.add_option("SCRIPT", options.script, "The script to read")
      ->required()
      ->type_name("")
      ->check(IsFileName());
  command.add_flag("--werror", options.werror, "Let warnings fail the run");
  command.add_flag("--verbose", options.verbose, "Show also what the library only remarks");
}

ExitStatus RunCompile(const CompileOptions& options, CompileProduct* product) {
  return CompileRun(options).Run(product);
}

}  // namespace rux
