// One run of the compiler over one script, with its diagnostics, and runs over several scripts.
#ifndef DRIVER_COMPILE_RUN_H_
#define DRIVER_COMPILE_RUN_H_

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "driver/compile_options.h"
#include "driver/part_report.h"
#include "run/run.h"
#include "sources/source_set.h"
#include "support/failure.h"

namespace rux::driver {

// What becomes of a script without errors.
class CompileProduct {
 public:
  virtual ~CompileProduct() = default;

  // Works with the checked model: may call gccOutput and let what that raises pass. Returns the
  // diagnostics about the product. Throws a Failure when it cannot write.
  virtual std::vector<diagnostics::Diagnostic> Make(const run::Result& result) = 0;

  // Whether Make looks for what the message is about. Only asked of messages about products.
  virtual bool LooksFor(const diagnostics::MessageRow& row) const = 0;

  // Puts the files in place. Called when the script has no errors, after the diagnostics were
  // printed. Throws a Failure when it cannot.
  virtual void Keep(const run::Result& result) = 0;

  // Called instead when the script has errors.
  virtual void Discard(const run::Result& result) = 0;
};

// For options of one script. Reads and checks it, has the product made, if there is one, prints
// the diagnostics and has the product kept. A part of machines has one report about what all of
// them find in it, and no product. Throws a Failure when the script cannot be read, and
// those of the product.
support::ExitStatus RunCompile(const CompileOptions& options, CompileProduct* product = nullptr);

// The same run over one script as it is, whose findings are for the caller: nothing is printed or
// written. Throws a Failure only when there are none to return.
struct Checked {
  PartFindings found;
  sources::SourceFiles files;          // all that there were to read
  std::optional<std::string> failure;  // why the run is not complete
};
Checked Check(const CompileOptions& options);

// Throws a Failure of wrong usage when standard input is one of several scripts, or has a name
// without being a script.
void ExpectForOne(const CompileOptions& options);

// The options for each of the scripts. Throws a Failure of wrong usage when they do not fit
// together.
std::vector<CompileOptions> OptionsPerScript(const CompileOptions& options);

// The same runs, but for scripts that are parts of machines: those are checked through each main
// script that includes them.
std::vector<CompileOptions> WithMainScripts(std::vector<CompileOptions> runs);

// Runs one as it is; several in processes of their own, with their output in the order of the
// scripts, one summary at the end, and one document where no script has its own. Returns the worst
// exit status. Throws a Failure.
support::ExitStatus RunAll(const std::vector<CompileOptions>& runs,
                           const std::function<support::ExitStatus(const CompileOptions&)>& run);

}  // namespace rux::driver

#endif  // DRIVER_COMPILE_RUN_H_
