// rux table MACHINE
#include <algorithm>
#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "driver/compile_options.h"
#include "driver/machines.h"
#include "lists/formats.h"
#include "machine/machine.h"
#include "reconcile/adopt.h"
#include "reconcile/compare.h"
#include "reconcile/listing.h"
#include "reconcile/pairing.h"
#include "reconcile/report.h"
#include "ruxcomp/language/sections.h"
#include "support/failure.h"
#include "support/folders.h"
#include "support/json.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "support/text_stream.h"
#include "table/columns.h"
#include "table/condition.h"
#include "table/forms.h"
#include "table/machine_table.h"
#include "tool/command.h"
#include "tool/machine_arguments.h"
#include "tool/row_names.h"
#include "tool/view_arguments.h"

namespace rux::tool {
namespace {

struct TableOptions {
  MachineOptions machine;
  std::string kind = "SENSOR";
  std::vector<std::string> columns;
  std::vector<std::string> conditions;
  std::vector<std::string> order;
  bool is_reversed = false;
  std::string format = "text";
  std::string color = "auto";
  reconcile::ListingOptions list;  // to compare with
  std::string applied;             // the list that the machine is to be made
  bool is_dry = false;
};

// The names in texts that each may have several, between commas.
std::vector<table::Column> ColumnsFor(const ruxcomp::language::SectionKind& kind,
                                      const std::vector<std::string>& texts) {
  std::vector<table::Column> columns;
  for (const std::string& text : texts) {
    for (std::size_t begin = 0; begin <= text.size();) {
      const std::size_t end = std::min(text.find(',', begin), text.size());
      columns.push_back(table::ColumnFor(kind, text.substr(begin, end - begin)));
      begin = end + 1;
    }
  }
  return columns;
}

// What is to be done with a table once the machine is known.
struct Request {
  const ruxcomp::language::SectionKind& kind;
  std::vector<table::Column> columns;
  std::vector<table::Column> order;
  std::vector<table::Condition> conditions;
};

Request RequestOf(const TableOptions& options) {
  const ruxcomp::language::SectionKind& kind = *ruxcomp::language::FindKind(options.kind);
  Request request{kind, ColumnsFor(kind, options.columns), ColumnsFor(kind, options.order), {}};
  for (const std::string& text : options.conditions) request.conditions.emplace_back(kind, text);
  return request;
}

table::MachineTable TableFor(const TableOptions& options, const Request& request,
                             const machine::Machine& machine) {
  const bool are_chosen = !request.columns.empty();
  table::MachineTable table = table::MakeTable(
      machine, request.kind, are_chosen ? request.columns : table::DefaultColumns(request.kind));
  table::KeepFitting(request.conditions, table);
  table::Sort(request.order, options.is_reversed, table);
  if (!are_chosen) table::DropEmptyColumns(table);
  return table;
}

void PrintSheet(const TableOptions& options, const table::Sheet& sheet) {
  if (options.format == "csv") {
    for (const std::string& line : sheet.lines) support::PrintError(line + '\n');
    return support::PrintAsIs("the table", support::WrittenText([&](support::TextStream& out) {
                                table::WriteCsv(sheet, out);
                              }),
                              "redirect the output");
  }
  support::Print(support::PrintOut, [&](support::TextStream& out) {
    for (const table::Form& form : table::kForms) {
      if (form.name == options.format && form.write != nullptr) return form.write(sheet, out);
    }
    table::WriteText(sheet, support::StyleOfOutput(options.color), out);
  });
}

// Prints the object that write(JsonObject&) fills, or the sheet, as the options say.
template <class Write>
void PrintForm(const TableOptions& options, const table::Sheet& sheet, Write write) {
  if (options.format != table::kJson) return PrintSheet(options, sheet);
  support::Print(support::PrintOut,
                 [&](support::TextStream& out) { support::WriteJson(out, write); });
}

void PrintTable(const TableOptions& options, const table::MachineTable& table) {
  const table::Sheet sheet = table::SheetOf(table);
  PrintForm(options, sheet, [&](support::JsonObject& json) {
    json.Schema(1);
    json.Member("file", options.machine.file);
    json.Member("kind", table.kind.keyword);
    table::WriteRows(sheet, json);
  });
}

support::ExitStatus Check(const TableOptions& options, const machine::Machine& machine,
                          const reconcile::Listing& listing) {
  const reconcile::Comparison comparison = reconcile::CompareWith(machine, listing);
  const table::Sheet sheet = reconcile::SheetOf(comparison, listing.path);
  PrintForm(options, sheet, [&](support::JsonObject& json) {
    reconcile::WriteComparison(comparison, listing.path, sheet, json);
  });
  return comparison.differences.empty() ? support::ExitStatus::kDone
                                        : support::ExitStatus::kFindings;
}

machine::Machine LoadAs(MachineOptions options, const std::string& name) {
  options.file = name;
  return LoadMachine(options);
}

// The other main scripts that include some of the scripts.
std::vector<std::string> OtherMachines(const TableOptions& options,
                                       const reconcile::Adoption& adoption) {
  driver::CompileOptions compile;
  compile.include_folders = options.machine.include_folders;
  compile.project_choice = options.machine.project;
  std::set<std::string> machines;
  for (const auto& [path, text] : adoption.texts) {
    for (const std::string& main : driver::FindMachinesWith(path, compile)) {
      if (support::WholeName(main) != support::WholeName(options.machine.file))
        machines.insert(main);
    }
  }
  return {machines.begin(), machines.end()};
}

support::ExitStatus Apply(const TableOptions& options, const machine::Machine& machine,
                          const reconcile::Listing& listing) {
  const auto load = [&](const std::string& name) { return LoadAs(options.machine, name); };
  const reconcile::Comparison comparison = reconcile::CompareToAdopt(machine, listing, load);
  const reconcile::Adoption adoption = reconcile::PlanAdoption(comparison);
  reconcile::VerifyAdoption(adoption, listing, options.machine.file,
                            OtherMachines(options, adoption), load);
  const bool is_made = !options.is_dry;
  if (is_made) reconcile::WriteScripts(adoption);
  const table::Sheet sheet = reconcile::SheetOf(adoption, listing, options.machine.file, is_made);
  PrintForm(options, sheet, [&](support::JsonObject& json) {
    reconcile::WriteAdoption(adoption, listing, options.machine.file, is_made, sheet, json);
  });
  const std::size_t made = is_made ? adoption.CountOfMade() : 0;
  return made == adoption.edits.size() ? support::ExitStatus::kDone
                                       : support::ExitStatus::kFindings;
}

// Throws a Failure of wrong usage for options that say nothing without a list, and for a list where
// the machine is.
void ExpectList(const TableOptions& options) {
  const bool is_input = options.list.path == "-" || options.applied == "-";
  if (is_input && options.machine.file == "-") {
    throw support::Failure(support::ExitStatus::kWrongUsage,
                           "standard input is the list; give the name of the machine's file");
  }
  const reconcile::PairingOptions& pairing = options.list.pairing;
  const bool has_list = !options.list.path.empty() || !options.applied.empty();
  const bool is_about_list = !options.list.format.empty() || !pairing.names.empty() ||
                             !pairing.tolerances.empty() || !pairing.units.empty();
  if (is_about_list && !has_list) {
    throw support::Failure(support::ExitStatus::kWrongUsage,
                           "--from, --map, --tolerance and --unit need --check or --apply");
  }
  if (options.is_dry && options.applied.empty())
    throw support::Failure(support::ExitStatus::kWrongUsage, "--dry-run needs --apply");
}

support::ExitStatus Table(const TableOptions& options) {
  ExpectList(options);
  Request request = RequestOf(options);
  const machine::Machine machine = LoadMachine(options.machine);
  if (options.list.path.empty() && options.applied.empty()) {
    PrintTable(options, TableFor(options, request, machine));
    return support::ExitStatus::kDone;
  }
  reconcile::ListingOptions list = options.list;
  if (!options.applied.empty()) list.path = options.applied;
  const reconcile::Listing listing =
      reconcile::ReadListing(list, request.kind, std::move(request.conditions));
  return options.applied.empty() ? Check(options, machine, listing)
                                 : Apply(options, machine, listing);
}

std::vector<std::string> TableForms() {
  std::vector<std::string> names = NamesOf(table::kForms);
  names.emplace_back(table::kJson);
  return names;
}

void AddComparison(Arguments& arguments, TableOptions& options) {
  arguments
      .Add(
          "--check", &options.list.path,
          "Compare with a list that others keep, or with what a program reads of a running machine")
      .File("LIST")
      .Without({"--columns", "--sort", "--reverse"});
  arguments
      .Add("--apply", &options.applied,
           "Edit the script and what it includes: numbers and texts become those of this list")
      .File("LIST")
      .Without({"--check", "--columns", "--sort", "--reverse"});
  arguments.Add("--dry-run", &options.is_dry, "Change nothing: list the edits of --apply");
  arguments
      .Add(
          "--from", &options.list.format,
          "The format of LIST: redfish, sensors (sensors -j), ipmitool-sensor (ipmitool sensor), "
          "ipmitool-sdr (ipmitool -c sdr elist), ipmi-sensors or csv. Without it, it is recognised")
      .OneOf("FORMAT", NamesOf(lists::Formats()));
  arguments
      .Add("--map", &options.list.pairing.names,
           "The column of LIST that is this one of the machine, such as NAME='Sensor name'")
      .Value("COLUMN=NAME");
  arguments
      .Add(
          "--tolerance", &options.list.pairing.tolerances,
          "By how much numbers may differ: an amount in the unit of the machine, or N%. COLUMN may "
          "be a pattern")
      .Value("COLUMN=AMOUNT");
  arguments
      .Add("--unit", &options.list.pairing.units, "What LIST measures in. COLUMN may be a pattern")
      .Value("COLUMN=UNIT");
}

void AddContents(Arguments& arguments, TableOptions& options) {
  arguments.Add("--kind", &options.kind, "The sections of the table; without it, SENSOR")
      .OneOf("KIND", table::KindNames());
  arguments
      .Add("--columns", &options.columns,
           "The columns, separated by commas: keys such as NAME, TYPE, P_UNIT, VALUE_IPMI; group, "
           "lists, unit, properties, place")
      .Value("COLUMN,...");
  arguments
      .Add("--where", &options.conditions,
           "Only rows that fit: COLUMN=PATTERN, COLUMN!=PATTERN, or COLUMN<N, <=, >, >= for "
           "numbers. With several, rows that fit all")
      .Value("CONDITION");
  arguments
      .Add("--sort", &options.order, "Sort by these columns; without it, as the machine has them")
      .Value("COLUMN,...");
  arguments.Add("--reverse", &options.is_reversed, "Sort in reverse order");
}

}  // namespace

Action SetUpTable(Arguments& arguments) {
  const auto options = std::make_shared<TableOptions>();
  AddMachine(arguments, options->machine);
  AddContents(arguments, *options);
  AddComparison(arguments, *options);
  arguments
      .Add("--format", &options->format,
           "text (default), csv, markdown, html or json (docs/table.schema.json, with --check "
           "docs/table-check.schema.json)")
      .OneOf("FORMAT", TableForms());
  AddOutputColor(arguments, options->color);
  AddSearchOptions(arguments, options->machine);
  arguments.Footer(
      "Limits are amounts in the unit that the project file states, or stored numbers.\n\n"
      "Examples:\n"
      "  rux table board.rux\n"
      "  rux table board.meta --columns NAME,ID,THRESHOLD_FH --where 'NAME=FAN*' --sort ID\n"
      "  rux table board.rux --format csv > sensors.csv\n"
      "  rux table board.rux --check sensors.csv --tolerance 'THRESHOLD_*=2%'\n"
      "  rux table board.rux --apply sensors.csv --dry-run");
  return [options] { return Table(*options); };
}

}  // namespace rux::tool
