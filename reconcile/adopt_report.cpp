// What became of the differences between a machine and a list.
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "reconcile/adopt.h"
#include "reconcile/compare.h"
#include "reconcile/listing.h"
#include "reconcile/report.h"
#include "support/json.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "table/cell.h"
#include "table/forms.h"

namespace rux::reconcile {
namespace {

const char* WordOf(const Edit& edit) {
  if (!edit.reason.empty()) return "left";
  if (edit.value.empty()) return "removed";
  return edit.difference->ours.empty() ? "added" : "changed";
}

// "board.rux, sensors.csv: 3 edits to be made in 1 file, 2 differences left"
std::string EditsLine(const Adoption& adoption, const Listing& listing, const std::string& machine,
                      bool is_made) {
  const std::size_t made = adoption.CountOfMade();
  const std::size_t left = adoption.edits.size() - made;
  std::string line = support::SafePath(machine) + ", " + support::SafePath(listing.path) + ": ";
  line += support::CountText(made, "edit");
  if (made > 0)
    line +=
        (is_made ? " in " : " to be made in ") + support::CountText(adoption.texts.size(), "file");
  if (left > 0) line += ", " + support::CountText(left, "difference") + " left";
  return line;
}

}  // namespace

table::Sheet SheetOf(const Adoption& adoption, const Listing& listing, const std::string& machine,
                     bool is_made) {
  table::Sheet sheet;
  sheet.title = "Edits of a machine";
  sheet.lines = NotesOf(*adoption.comparison);
  sheet.lines.insert(sheet.lines.begin(), EditsLine(adoption, listing, machine, is_made));
  sheet.columns = DifferenceColumns();
  sheet.columns.insert(sheet.columns.begin(), "edit");
  sheet.columns.emplace_back("value");
  sheet.columns.emplace_back("reason");
  for (const Edit& edit : adoption.edits) {
    std::vector<table::Cell> cells = CellsOf(*edit.difference, listing.path);
    cells.insert(cells.begin(), table::TextCell(WordOf(edit)));
    for (const std::string* text : {&edit.value, &edit.reason})
      cells.push_back(text->empty() ? table::Cell() : table::TextCell(*text));
    sheet.rows.push_back(table::RowOf(std::move(cells)));
  }
  return sheet;
}

void WriteAdoption(const Adoption& adoption, const Listing& listing, const std::string& machine,
                   bool is_made, const table::Sheet& sheet, support::JsonObject& json) {
  json.Schema(1);
  json.Member("file", machine);
  json.Member("list", listing.path);
  json.Member("kind", listing.kind.keyword);
  json.Member("written", is_made);
  json.Member("edits", adoption.CountOfMade());
  json.Member("left", adoption.edits.size() - adoption.CountOfMade());
  WriteNotes(*adoption.comparison, json);
  json.Array("files", [&](support::JsonArray& files) {
    for (const auto& [path, text] : adoption.texts) files.Item(path);
  });
  table::WriteRows(sheet, json);
}

}  // namespace rux::reconcile
