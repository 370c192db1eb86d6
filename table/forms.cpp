#include "table/forms.h"

#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/grid.h"
#include "ruxcomp/language/number.h"
#include "support/csv_text.h"
#include "support/json.h"
#include "support/markup_text.h"
#include "support/safe_text.h"
#include "support/terminal.h"
#include "support/text_stream.h"
#include "support/wrap.h"
#include "table/cell.h"
#include "table/columns.h"
#include "table/machine_table.h"

namespace rux::table {
namespace {

inspect::Cell PiecesOf(const Cell& cell) {
  inspect::Cell pieces;
  for (const std::string& text : cell.texts) support::AddToList(pieces, support::SafeText(text));
  return pieces;
}

// write(text) for each column of a row.
template <class Write>
void ForEachText(const RowCells& cells, const Sheet& sheet, Write write) {
  ForEachCell(cells, sheet.columns.size(),
              [&](const Cell& cell) { write(support::SafeText(TextOf(cell))); });
}

void WriteCell(const std::string& column, const Cell& cell, support::JsonObject& json) {
  if (cell.is_list) {
    json.Array(column, [&](support::JsonArray& texts) { texts.Items(cell.texts); });
  } else if (cell.number && language::IsHexadecimal(cell.texts.front())) {
    json.Member(column, *cell.number);
  } else if (cell.number) {
    json.Member(column, support::JsonNumber{cell.texts.front()});
  } else {
    json.Member(column, cell.texts.front());
  }
}

}  // namespace

Sheet SheetOf(const MachineTable& table) {
  Sheet sheet;
  sheet.title =
      fmt::format("{} of {}", table.kind.keyword, support::SafePath(table.machine.name()));
  for (const Column& column : table.columns) sheet.columns.push_back(column.name);
  sheet.rows.reserve(table.rows.size());
  for (const Row& row : table.rows) sheet.rows.push_back(row.cells);
  return sheet;
}

void WriteText(const Sheet& sheet, support::OutputStyle style, support::TextStream& out) {
  for (const std::string& line : sheet.lines) out += line + '\n';
  if (sheet.rows.empty()) return;
  std::vector<inspect::Row> rows(1);
  for (const std::string& column : sheet.columns)
    rows.front().push_back({support::SafeText(column)});
  for (const RowCells& cells : sheet.rows) {
    inspect::Row& row = rows.emplace_back();
    ForEachCell(cells, sheet.columns.size(),
                [&](const Cell& cell) { row.push_back(PiecesOf(cell)); });
  }
  out += inspect::Grid(rows, 1, style).Text();
}

void WriteCsv(const Sheet& sheet, support::TextStream& out) {
  std::vector<std::string> fields = sheet.columns;
  support::WriteCsvLine(fields, out);
  for (const RowCells& cells : sheet.rows) {
    fields.clear();
    ForEachCell(cells, sheet.columns.size(),
                [&](const Cell& cell) { fields.push_back(TextOf(cell)); });
    support::WriteCsvLine(fields, out);
  }
}

void WriteMarkdown(const Sheet& sheet, support::TextStream& out) {
  for (const std::string& line : sheet.lines) out += support::MarkdownText(line) + "\n\n";
  if (sheet.rows.empty()) return;
  const auto write = [&](const std::string& text) {
    out += fmt::format(" {} |", support::MarkdownText(text));
  };
  out += '|';
  for (const std::string& column : sheet.columns) write(support::SafeText(column));
  out += "\n|";
  for (std::size_t i = 0; i < sheet.columns.size(); ++i) out += "---|";
  out += '\n';
  for (const RowCells& cells : sheet.rows) {
    out += '|';
    ForEachText(cells, sheet, write);
    out += '\n';
  }
}

void WriteHtml(const Sheet& sheet, support::TextStream& out) {
  out += support::HtmlHead(sheet.title);
  for (const std::string& line : sheet.lines)
    out += fmt::format("<p>{}</p>\n", support::MarkupText(line));
  if (!sheet.rows.empty()) {
    out += "<table>\n<tr>";
    for (const std::string& column : sheet.columns)
      out +=
          fmt::format("<th scope=\"col\">{}</th>", support::MarkupText(support::SafeText(column)));
    out += "</tr>\n";
    for (const RowCells& cells : sheet.rows) {
      out += "<tr>";
      ForEachText(cells, sheet, [&](const std::string& text) {
        out += fmt::format("<td>{}</td>", support::MarkupText(text));
      });
      out += "</tr>\n";
    }
    out += "</table>\n";
  }
  out += support::kHtmlEnd;
}

void WriteRows(const Sheet& sheet, support::JsonObject& json, const AddMembers& add) {
  json.Array("columns", [&](support::JsonArray& columns) { columns.Items(sheet.columns); });
  std::size_t number = 0;
  json.Objects("rows", sheet.rows, [&](support::JsonObject& row, const RowCells& cells) {
    for (const PlacedCell& placed : cells)
      WriteCell(sheet.columns[placed.column], placed.cell, row);
    if (add) add(number, row);
    ++number;
  });
}

}  // namespace rux::table
