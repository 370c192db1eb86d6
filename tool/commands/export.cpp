// rux export FORMAT MACHINE
#include <memory>
#include <string>

#include "driver/overwriting.h"
#include "exports/formats.h"
#include "losses/ledger.h"
#include "losses/report.h"
#include "machine/machine.h"
#include "machine/origins.h"
#include "support/failure.h"
#include "support/placement.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "support/text_stream.h"
#include "tool/command.h"
#include "tool/loss_arguments.h"
#include "tool/machine_arguments.h"
#include "tool/row_names.h"

namespace rux::tool {
namespace {

struct ExportOptions {
  std::string format;
  MachineOptions machine;
  std::string output = "-";  // standard output
  LossOptions losses;

  bool has_file() const { return output != "-"; }
  bool has_report() const { return !losses.file.empty(); }
};

// The machine and both results are different files.
void ExpectDifferentFiles(const ExportOptions& options) {
  const driver::NamedFile machine{"machine", options.machine.file};
  const driver::NamedFile result{"result", options.output};
  const driver::NamedFile report{"report", options.losses.file};
  if (options.output == options.losses.file) {
    throw support::Failure(support::ExitStatus::kWrongUsage,
                           "the result and the report of losses are different files: use -o");
  }
  if (options.has_file()) driver::RefuseToOverwrite(machine, result);
  if (options.has_report()) driver::RefuseToOverwrite(machine, report);
  if (options.has_file() && options.has_report()) driver::RefuseToOverwrite(result, report);
}

// The files that the script includes, too.
void KeepScripts(const ExportOptions& options, const machine::Machine& machine) {
  if (machine.origins() == nullptr || !machine.file().revision.empty()) return;
  for (const std::string& path : machine.origins()->files()) {
    const driver::NamedFile script{"script", path};
    if (options.has_file()) driver::RefuseToOverwrite(script, {"result", options.output});
    if (options.has_report()) driver::RefuseToOverwrite(script, {"report", options.losses.file});
  }
}

support::ExitStatus Export(const ExportOptions& options) {
  ExpectDifferentFiles(options);
  const machine::Machine machine = LoadMachine(options.machine);
  KeepScripts(options, machine);
  losses::Ledger ledger;
  const std::string text = support::WrittenText([&](support::TextStream& out) {
    exports::WriteMachine(*exports::FindFormat(options.format), machine, ledger,
                          options.has_report(), out);
  });
  ReportLosses(options.losses, ledger);
  if (!options.has_report() && ledger.HasLosses())
    support::PrintError("rux: note: " + losses::CountsText(ledger) + "; --losses lists them\n");
  if (options.losses.fails_on_loss && ledger.HasLosses()) return support::ExitStatus::kFindings;
  if (options.has_file()) {
    support::PutInPlace({{options.output, text}});
  } else {
    support::PrintAsIs("the export", text, "use -o");
  }
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpExport(Arguments& arguments) {
  const auto options = std::make_shared<ExportOptions>();
  arguments
      .Add("FORMAT", &options->format,
           "Constants for c, rust, go or python; csv, json; prometheus, prometheus-rules, "
           "prometheus-tests; entity-manager or lm-sensors configurations; ipmi-sdr records")
      .OneOf("FORMAT", NamesOf(exports::kFormats))
      .Required();
  AddMachine(arguments, options->machine);
  arguments
      .Add("-o,--output", &options->output, "The file to write; - for standard output (default)")
      .File("OUT");
  AddLosses(arguments, options->losses,
            "Report in FILE, or on standard output (-), what became of each entry of the machine",
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
