// The forms in which tables are printed.
#ifndef TABLE_FORMS_H_
#define TABLE_FORMS_H_

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "support/json.h"
#include "support/terminal.h"
#include "support/text_stream.h"
#include "table/cell.h"
#include "table/machine_table.h"

namespace rux::table {

// What is printed: a table of a machine, or one of what was found in it.
struct Sheet {
  std::string title;                 // of a page
  std::vector<std::string> lines;    // before the table, for people
  std::vector<std::string> columns;  // what heads them
  std::vector<RowCells> rows;
};

Sheet SheetOf(const MachineTable& table);

void WriteText(const Sheet& sheet, support::OutputStyle style, support::TextStream& out);

// As RFC 4180 has it, with texts as they are: not for terminals.
void WriteCsv(const Sheet& sheet, support::TextStream& out);

void WriteMarkdown(const Sheet& sheet, support::TextStream& out);

// A page that needs no other file.
void WriteHtml(const Sheet& sheet, support::TextStream& out);

// The members "columns" and "rows" of docs/table.schema.json: an object for each row, without what
// is empty. add(row, json) writes members that the row of that number has besides.
using AddMembers = std::function<void(std::size_t row, support::JsonObject& json)>;
void WriteRows(const Sheet& sheet, support::JsonObject& json, const AddMembers& add = {});

// The forms for people by name. JSON has more to say than a sheet.
inline constexpr std::string_view kJson = "json";
struct Form {
  std::string_view name;
  void (*write)(const Sheet& sheet, support::TextStream& out);  // null: WriteText()
};
inline constexpr Form kForms[] = {
    {"text", nullptr}, {"csv", WriteCsv}, {"markdown", WriteMarkdown}, {"html", WriteHtml}};

}  // namespace rux::table

#endif  // TABLE_FORMS_H_
