#include "tool/compile/compile_run.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "ruxcomp/compile.h"
#include "tool/compile/raised_error.h"
#include "tool/compile/script_path.h"
#include "tool/diagnostics/from_messages.h"
#include "tool/diagnostics/locator.h"
#include "tool/diagnostics/printer.h"
#include "tool/failure.h"
#include "tool/output.h"

namespace rux {
namespace {

// The library does not say why it cannot open a script.
Failure WhyNotOpened(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return SystemFailure("cannot read", path);
  struct stat status;
  const bool is_folder = fstat(file, &status) == 0 && S_ISDIR(status.st_mode);
  close(file);
  if (is_folder) return SystemFailure("cannot read", path, EISDIR);
  return Failure(ExitStatus::kTrouble, "cannot read " + path + ": the reader does not open it");
}

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
    Report();
    if (failure_) throw *failure_;
    if (!opened_) throw WhyNotOpened(ToOpenablePath(script_));
    if (Fails() || !accepted_) return ExitStatus::kFindings;
    if (product != nullptr) product->Keep();
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
    } catch (const std::exception& raised) {
      raised_ = DiagnosticsOfRaised(locator_.sources(), phase, raised);
    }
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
    const PrintOptions print{isatty(STDERR_FILENO) != 0, options_.verbose};
    std::string text = PrintedDiagnostics(diagnostics_, print);
    if (opened_) text += SummaryLine(ToOpenablePath(script_), diagnostics_);
    std::fwrite(text.data(), 1, text.size(), stderr);
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
  command.add_option("SCRIPT", options.script, "The script to read")->required()->type_name("");
  command.add_flag("--werror", options.werror, "Let warnings fail the run");
  command.add_flag("--verbose", options.verbose, "Show also what the library only remarks");
}

ExitStatus RunCompile(const CompileOptions& options, CompileProduct* product) {
  return CompileRun(options).Run(product);
}

}  // namespace rux
