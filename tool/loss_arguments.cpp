#include "tool/loss_arguments.h"

#include <string>
#include <vector>

#include "losses/ledger.h"
#include "losses/report.h"
#include "support/placement.h"
#include "support/standard_streams.h"
#include "support/text_stream.h"
#include "tool/command.h"

namespace rux::tool {

void AddLosses(Arguments& arguments, LossOptions& options, const char* report,
               const char* failure) {
  std::vector<std::string> forms;
  for (const losses::Form& form : losses::kForms) forms.emplace_back(form.name);
  arguments.Add("--losses", &options.file, report).File("FILE");
  arguments
      .Add("--losses-format", &options.form, "text (default), or json (docs/losses.schema.json)")
      .OneOf("FORMAT", forms);
  arguments.Add("--fail-on-loss", &options.fails_on_loss, failure);
}

void ReportLosses(const LossOptions& options, const losses::Ledger& ledger) {
  if (options.file.empty()) return;
  const losses::Form* chosen = losses::kForms;
  for (const losses::Form& form : losses::kForms) {
    if (form.name == options.form) chosen = &form;
  }
  const auto write = [&](support::TextStream& out) { chosen->write(ledger, out); };
  if (options.file == "-") return support::Print(support::PrintOut, write);
  const std::string text = support::WrittenText(write);
  support::MakeFolderOf(options.file);
  support::PutInPlace({{options.file, text}});
}

}  // namespace rux::tool
