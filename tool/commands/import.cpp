// rux import FORMAT SOURCE...
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "driver/overwriting.h"
#include "imports/board.h"
#include "imports/folder.h"
#include "imports/formats.h"
#include "imports/layout.h"
#include "imports/sound.h"
#include "imports/source_names.h"
#include "imports/update.h"
#include "lists/formats.h"
#include "losses/ledger.h"
#include "losses/report.h"
#include "settings/json_file.h"
#include "support/failure.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "support/sha256.h"
#include "support/standard_streams.h"
#include "tool/command.h"
#include "tool/loss_arguments.h"
#include "tool/row_names.h"

namespace rux::tool {
namespace {

struct ImportOptions {
  std::string format;
  std::vector<std::string> sources;
  std::string folder;
  LossOptions losses;
  imports::ReadOptions reading;
};

constexpr std::size_t kLargestSource = std::size_t{1} << 28;

const imports::Format& FormatOf(const ImportOptions& options) {
  return *std::find_if(
      imports::Formats().begin(), imports::Formats().end(),
      [&](const imports::Format& format) { return format.name == options.format; });
}

imports::Sources ReadSources(const ImportOptions& options) {
  imports::Sources sources;
  for (const std::string& path : options.sources)
    sources.push_back({path, settings::ReadTextFile(path, kLargestSource)});
  return sources;
}

std::string DigestOf(const std::string& bytes) {
  support::Sha256 sum;
  sum.Add(bytes);
  return sum.End().sha256;
}

imports::LayoutOptions LayoutFor(const ImportOptions& options, const imports::Sources& sources) {
  imports::LayoutOptions layout;
  layout.heading.push_back(fmt::format("Imported by rux import {} from", options.format));
  const std::vector<std::string> names = imports::ShortestNames(options.sources);
  for (std::size_t i = 0; i < sources.size(); ++i) {
    layout.heading.push_back(fmt::format("  {} (SHA-256 {})", names[i], DigestOf(sources[i].text)));
  }
  return layout;
}

// What the folder is to have: in an empty one, what the import writes; in that of an earlier
// import, that and what was edited since.
imports::Update UpdateFor(const std::string& folder,
                          const std::optional<std::vector<imports::ScriptFile>>& record,
                          const std::vector<imports::ScriptFile>& written) {
  if (record) return imports::UpdateOf(folder, *record, written);
  imports::ExpectNew(folder, written);
  return {written, {}, {}};
}

void PrintConflicts(const std::string& folder, const imports::Update& update) {
  for (const auto& [name, conflict] : update.conflicts) {
    const auto shown = [](const std::string& line) {
      return line.empty() ? std::string("nothing") : support::SafeText(line);
    };
    const std::string section = conflict.section.empty() ? "" : " in " + conflict.section;
    support::PrintError(fmt::format("{}:{}: conflict{}: edited, {}; the import has {}\n",
                                    support::SafePath(imports::PathIn(folder, name)), conflict.line,
                                    support::SafeText(section), shown(conflict.edited),
                                    shown(conflict.written)));
  }
}

// The sensors of the last import that are gone.
void PrintTakenOut(const std::string& folder, const std::vector<imports::ScriptFile>& record,
                   const imports::Update& update) {
  const auto left = imports::SensorIdsIn(update.files);
  std::vector<std::string> gone;
  for (const auto& [name, id] : imports::SensorIdsIn(record)) {
    if (left.count(name) == 0) gone.push_back(name);
  }
  if (gone.empty()) return;
  constexpr std::size_t kShown = 5;
  const std::size_t more = gone.size() > kShown ? gone.size() - kShown : 0;
  gone.resize(gone.size() - more);
  support::PrintError(fmt::format("{}: taken out, for the sources do not have them: {}{}\n",
                                  support::SafePath(imports::PathIn(folder, imports::kMainScript)),
                                  support::SafeText(fmt::format("{}", fmt::join(gone, ", "))),
                                  more == 0 ? "" : fmt::format(" and {} more", more)));
}

// The report is not another file of the command.
void ExpectOwnReport(const ImportOptions& options, const std::string& folder) {
  if (options.losses.file.empty() || options.losses.file == "-") return;
  const driver::NamedFile report{"report", options.losses.file};
  for (const std::string& source : options.sources)
    driver::RefuseToOverwrite({"source", source}, report);
  const std::filesystem::path path = std::filesystem::absolute(options.losses.file);
  const bool is_in_folder =
      path.lexically_normal().parent_path() == std::filesystem::absolute(folder).lexically_normal();
  const std::string name = path.filename().string();
  const bool is_own = path.extension() == ".rux" || name.compare(0, 4, ".rux") == 0;
  if (!is_in_folder || !is_own) return;
  throw support::Failure(support::ExitStatus::kWrongUsage,
                         "--losses: {} is for a script of the import", options.losses.file);
}

[[noreturn]] void RefuseEmpty(const ImportOptions& options, const losses::Ledger& ledger) {
  ReportLosses(options.losses, ledger);
  std::set<std::string> reasons;
  for (const losses::Entry& entry : ledger.entries()) {
    if (entry.outcome == losses::Outcome::kDropped &&
        entry.reason != losses::Reason::kNotUnderstood)
      reasons.insert(std::string(losses::RowOf(entry.reason).sentence));
  }
  throw support::Failure(support::ExitStatus::kTrouble,
                         "{}: describes nothing that can be monitored{}{}", options.sources.front(),
                         reasons.empty() ? "" : ": ", fmt::format("{}", fmt::join(reasons, "; ")));
}

void PrintSummary(const std::string& folder, const imports::Board& board,
                  const losses::Ledger& ledger) {
  support::PrintError(
      fmt::format("{}: {}\n{}\n", support::SafePath(imports::PathIn(folder, imports::kMainScript)),
                  support::CountText(board.sensors.size(), "sensor"), losses::CountsText(ledger)));
}

support::ExitStatus Import(const ImportOptions& options) {
  const std::string folder = imports::WithoutSlashAtEnd(options.folder);
  ExpectOwnReport(options, folder);
  const imports::Sources sources = ReadSources(options);
  const auto record = imports::ReadRecord(folder);
  imports::LayoutOptions layout = LayoutFor(options, sources);
  if (record) {
    layout.ids = imports::SensorIdsIn(*record);
    for (const auto& [name, id] : imports::SensorIdsIn(imports::ScriptsIn(folder)))
      layout.taken.insert(id);
  }
  losses::Ledger ledger;
  const imports::Board board = FormatOf(options).read(sources, options.reading, ledger);
  if (board.sensors.empty() && board.devices.empty()) RefuseEmpty(options, ledger);
  const std::vector<imports::ScriptFile> written = imports::LayOut(board, layout, ledger);
  imports::Update update = UpdateFor(folder, record, written);
  imports::ExpectSound(folder, update.files);
  ReportLosses(options.losses, ledger);
  if (options.losses.fails_on_loss && ledger.HasLosses()) {
    support::PrintError(fmt::format("{}; nothing is written\n", losses::CountsText(ledger)));
    return support::ExitStatus::kFindings;
  }
  update.files.push_back(imports::RecordOf(written));
  imports::PutInFolder(folder, update.files);
  imports::RemoveFrom(folder, update.removed);
  PrintConflicts(folder, update);
  if (record) PrintTakenOut(folder, *record, update);
  PrintSummary(folder, board, ledger);
  return update.conflicts.empty() ? support::ExitStatus::kDone : support::ExitStatus::kFindings;
}

}  // namespace

Action SetUpImport(Arguments& arguments) {
  const auto options = std::make_shared<ImportOptions>();
  arguments.Add("FORMAT", &options->format, "What the sources are")
      .OneOf("FORMAT", NamesOf(imports::Formats()))
      .Required();
  arguments.Add("SOURCE", &options->sources, "The files; several are one machine")
      .File()
      .Required();
  arguments.Add("-o,--output-dir", &options->folder, "The folder of the scripts")
      .File("DIR")
      .Required();
  AddLosses(arguments, options->losses,
            "Report in FILE, or on standard output (-), what became of each item of the sources",
            "Write no scripts, and exit with 1, if anything gets lost");
  arguments
      .Add("--from", &options->reading.list,
           "csv: the program that the list is from (default: it is recognised)")
      .OneOf("FORMAT", NamesOf(lists::Formats()));
  arguments
      .Add("--map", &options->reading.columns.names,
           "csv: the column NAME of the list is this COLUMN, such as NAME='Sensor name'")
      .Value("COLUMN=NAME");
  arguments
      .Add("--unit", &options->reading.columns.units,
           "csv: what the limits of a column are measured in, such as 'THRESHOLD_*=mV'")
      .Value("COLUMN=UNIT");
  arguments.Footer(
      "The scripts pass rux check without a warning, or nothing is written. DIR/main.rux is the "
      "main\nscript. Into the folder of an earlier import, only what changed in the source is "
      "written; what\nwas edited stays, and conflicts are reported.\n\n"
      "Examples:\n"
      "  rux import csv sensors.csv -o boards/new --map NAME=Sensor\n"
      "  rux import csv sensors.csv -o boards/new --losses losses.json --losses-format json\n"
      "  rux import csv sensors.csv -o boards/new --losses - --fail-on-loss");
  return [options] { return Import(*options); };
}

}  // namespace rux::tool
