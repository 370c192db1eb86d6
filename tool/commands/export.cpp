// rux export FORMAT MACHINE
#include <memory>
#include <string>
#include <vector>

#include "driver/overwriting.h"
#include "exports/formats.h"
#include "losses/ledger.h"
#include "losses/report.h"
#include "machine/machine.h"
#include "support/failure.h"
#include "support/placement.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "support/text_stream.h"
#include "tool/command.h"
#include "tool/machine_arguments.h"

namespace rux::tool {
namespace {

struct ExportOptions {
  std::string format;
  MachineOptions machine;
  std::string output = "-";  // standard output
  std::string losses;        // empty: no report

  bool has_file() const { return output != "-"; }
  std::string losses_format = std::string(losses::kForms[0].name);
  bool has_to_keep_all = false;
};

std::string LossesText(const ExportOptions& options, const losses::Ledger& ledger) {
  return support::WrittenText([&](support::TextStream& out) {
    for (const losses::Form& form : losses::kForms) {
      if (form.name == options.losses_format) form.write(ledger, out);
    }
  });
}

// The machine and both results are different files.
void ExpectDifferentFiles(const ExportOptions& options) {
  const driver::NamedFile machine{"machine", options.machine.file};
  const driver::NamedFile result{"result", options.output};
  const driver::NamedFile report{"report", options.losses};
  if (options.has_file()) driver::RefuseToOverwrite(machine, result);
  if (!options.losses.empty()) driver::RefuseToOverwrite(machine, report);
  if (options.has_file() && !options.losses.empty()) driver::RefuseToOverwrite(result, report);
}

support::ExitStatus Export(const ExportOptions& options) {
  ExpectDifferentFiles(options);
  const machine::Machine machine = LoadMachine(options.machine);
  losses::Ledger ledger;
  const std::string text = support::WrittenText([&](support::TextStream& out) {
    exports::WriteMachine(*exports::FindFormat(options.format), machine, ledger,
                          !options.losses.empty(), out);
  });
  const std::string report = options.losses.empty() ? "" : LossesText(options, ledger);
  std::vector<support::NewFile> files;
  if (!options.losses.empty()) files.push_back({options.losses, report});
  const bool is_refused = options.has_to_keep_all && ledger.HasLosses();
  if (options.has_file() && !is_refused) files.push_back({options.output, text});
  support::PutInPlace(files);
  if (options.losses.empty() && ledger.HasLosses())
    support::PrintError("rux: note: " + losses::CountsText(ledger) + "; --losses lists them\n");
  if (is_refused) return support::ExitStatus::kFindings;
  if (!options.has_file()) support::PrintAsIs("the export", text, "use -o");
  return support::ExitStatus::kDone;
}

std::vector<std::string> ExportFormats() {
  std::vector<std::string> names;
  for (const exports::Format& format : exports::kFormats) names.emplace_back(format.name);
  return names;
}

std::vector<std::string> LossForms() {
  std::vector<std::string> names;
  for (const losses::Form& form : losses::kForms) names.emplace_back(form.name);
  return names;
}

}  // namespace

Action SetUpExport(Arguments& arguments) {
  const auto options = std::make_shared<ExportOptions>();
  arguments
      .Add("FORMAT", &options->format,
           "Constants for c, rust, go or python; csv, json; prometheus, prometheus-rules, "
           "prometheus-tests; entity-manager or lm-sensors configurations; ipmi-sdr records")
      .OneOf("FORMAT", ExportFormats())
      .Required();
  AddMachine(arguments, options->machine);
  arguments
      .Add("-o,--output", &options->output, "The file to write; - for standard output (default)")
      .File("OUT");
  arguments
      .Add("--losses", &options->losses,
           "Write what becomes of each entry of the machine: used, changed or dropped, and why")
      .File("FILE");
  arguments
      .Add("--losses-format", &options->losses_format,
           "text (default) or json (docs/losses.schema.json)")
      .OneOf("FORM", LossForms());
  arguments.Add("--fail-on-loss", &options->has_to_keep_all,
                "Write no result, and exit with 1, when anything of the machine is lost");
  AddSearchOptions(arguments, options->machine);
  arguments.Footer(
      "Limits are amounts in the unit that the project file states, or stored numbers.\n\n"
      "Examples:\n"
      "  rux export c board.rux -o board.h\n"
      "  rux export prometheus board.meta -o board.prom\n"
      "  rux export csv board.rux --losses losses.txt > board.csv");
  return [options] { return Export(*options); };
}

}  // namespace rux::tool
