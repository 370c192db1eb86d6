// rux table FILE
#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "driver/compile_options.h"
#include "machine/load.h"
#include "machine/machine.h"
#include "ruxcomp/language/sections.h"
#include "settings/project.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "support/text_stream.h"
#include "table/columns.h"
#include "table/condition.h"
#include "table/forms.h"
#include "table/machine_table.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"
#include "tool/view_arguments.h"

namespace rux::tool {
namespace {

struct Options {
  std::string file;
  std::string kind = "SENSOR";
  std::vector<std::string> columns;
  std::vector<std::string> conditions;
  std::vector<std::string> order;
  bool is_reversed = false;
  std::string format = "text";
  std::string color = "auto";
  std::vector<std::string> include_folders;
  settings::ProjectChoice project;
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

table::MachineTable TableFor(const Options& options, const machine::Machine& machine) {
  const ruxcomp::language::SectionKind& kind = *ruxcomp::language::FindKind(options.kind);
  std::vector<table::Column> columns = ColumnsFor(kind, options.columns);
  const std::vector<table::Column> order = ColumnsFor(kind, options.order);
  std::vector<table::Condition> conditions;
  for (const std::string& text : options.conditions) conditions.emplace_back(kind, text);
  const bool are_chosen = !columns.empty();
  if (!are_chosen) columns = table::DefaultColumns(kind);
  table::MachineTable table = table::MakeTable(machine, kind, std::move(columns));
  table::KeepFitting(conditions, table);
  table::Sort(order, options.is_reversed, table);
  if (!are_chosen) table::DropEmptyColumns(table);
  return table;
}

void PrintSheet(const Options& options, const table::Sheet& sheet) {
  if (options.format == "csv") {
    return support::PrintScript(
        support::WrittenText([&](support::TextStream& out) { table::WriteCsv(sheet, out); }),
        "redirect the output");
  }
  support::Print(support::PrintOut, [&](support::TextStream& out) {
    for (const table::Form& form : table::kForms) {
      if (form.name == options.format && form.write != nullptr) return form.write(sheet, out);
    }
    table::WriteText(sheet, support::StyleOfOutput(options.color), out);
  });
}

void PrintTable(const Options& options, const table::MachineTable& table) {
  const table::Sheet sheet = table::SheetOf(table);
  if (options.format == table::kJson) {
    return support::Print(support::PrintOut, [&](support::TextStream& out) {
      support::WriteJson(out, [&](support::JsonObject& json) {
        json.Member("schema", 1);
        json.Member("file", options.file);
        json.Member("kind", table.kind.keyword);
        table::WriteRows(sheet, json);
      });
    });
  }
  PrintSheet(options, sheet);
}

support::ExitStatus Table(const Options& options) {
  const std::vector<machine::Machine> machines = machine::Load(
      {options.file}, {options.include_folders, driver::ProjectsOf(options.project), ""});
  PrintTable(options, TableFor(options, machines.front()));
  return support::ExitStatus::kDone;
}

std::vector<std::string> TableForms() {
  std::vector<std::string> names;
  for (const table::Form& form : table::kForms) names.emplace_back(form.name);
  names.emplace_back(table::kJson);
  return names;
}

void AddContents(Arguments& arguments, Options& options) {
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
  arguments.Add("--reverse", &options.is_reversed, "The other way round");
}

}  // namespace

Action SetUpTable(Arguments& arguments) {
  const auto options = std::make_shared<Options>();
  arguments
      .Add("MACHINE", &options->file,
           "A meta file, a debug meta file or a script; or REVISION:PATH for one of a git revision")
      .File()
      .Required();
  AddContents(arguments, *options);
  arguments
      .Add("--format", &options->format,
           "text (default), csv, markdown, html or json (docs/table.schema.json)")
      .OneOf("FORMAT", TableForms());
  AddOutputColor(arguments, options->color);
  AddSearchOptions(arguments, options->include_folders, options->project);
  arguments.Footer(
      "Limits are amounts in the unit that the project file states, or stored numbers.\n\n"
      "Examples:\n"
      "  rux table board.rux\n"
      "  rux table board.meta --columns NAME,ID,THRESHOLD_FH --where 'NAME=FAN*' --sort ID\n"
      "  rux table board.rux --format csv > sensors.csv");
  return [options] { return Table(*options); };
}

}  // namespace rux::tool
