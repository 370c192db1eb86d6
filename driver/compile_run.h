// One run of the compiler over one script, with its diagnostics.
#ifndef DRIVER_COMPILE_RUN_H_
#define DRIVER_COMPILE_RUN_H_

#include <string>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "driver/compile_options.h"
#include "run/run.h"
#include "support/failure.h"

namespace rux::driver {

// What becomes of a script without errors.
class CompileProduct {
 public:
  virtual ~CompileProduct() = default;

  // Works with the checked model: may call gccOutput and let what that raises pass. Returns the
  // diagnostics about the product. Throws a Failure when it cannot write.
  virtual std::vector<diagnostics::Diagnostic> Make(const run::Result& result) = 0;

  // Puts the files in place. Called when the script has no errors, after the diagnostics were
  // printed. Throws a Failure when it cannot.
  virtual void Keep(const run::Result& result) = 0;

  // Called instead when the script has errors.
  virtual void Discard(const run::Result& result) = 0;
};

// For options of one script. Reads and checks it, has the product made, if there is one, prints
// the diagnostics and has the product kept. Throws a Failure when the script cannot be read, and
// those of the product.
support::ExitStatus RunCompile(const CompileOptions& options, CompileProduct* product = nullptr);

}  // namespace rux::driver

#endif  // DRIVER_COMPILE_RUN_H_
