// Arguments of the commands that put machines into other forms: where they report what is lost.
#ifndef TOOL_LOSS_ARGUMENTS_H_
#define TOOL_LOSS_ARGUMENTS_H_

#include <string>

#include "losses/ledger.h"
#include "losses/report.h"
#include "tool/command.h"

namespace rux::tool {

struct LossOptions {
  std::string file;  // empty: no report; "-": standard output
  std::string form = std::string(losses::kForms[0].name);
  bool fails_on_loss = false;
};

// --losses, --losses-format and --fail-on-loss, with what the help says of the first and the last.
void AddLosses(Arguments& arguments, LossOptions& options, const char* report, const char* failure);

// Throws a Failure when the report cannot be written.
void ReportLosses(const LossOptions& options, const losses::Ledger& ledger);

}  // namespace rux::tool

#endif  // TOOL_LOSS_ARGUMENTS_H_
