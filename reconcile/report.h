// What was found when a machine and a list were compared, for people and programs.
#ifndef RECONCILE_REPORT_H_
#define RECONCILE_REPORT_H_

#include <string>
#include <vector>

#include "reconcile/compare.h"
#include "support/json.h"
#include "table/cell.h"
#include "table/forms.h"

namespace rux::reconcile {

// A row for each difference, with its places on both sides; before them a summary, and what was not
// compared or not known.
table::Sheet SheetOf(const Comparison& comparison, const std::string& list_path);

// What was not compared, and what is not known: a line each; as members of the object.
std::vector<std::string> NotesOf(const Comparison& comparison);
void WriteNotes(const Comparison& comparison, support::JsonObject& json);

// The columns of such a row, and its cells.
std::vector<std::string> DifferenceColumns();
std::vector<table::Cell> CellsOf(const Difference& difference, const std::string& list_path);

// The object of docs/table-check.schema.json; `sheet`: of the comparison.
void WriteComparison(const Comparison& comparison, const std::string& list_path,
                     const table::Sheet& sheet, support::JsonObject& json);

}  // namespace rux::reconcile

#endif  // RECONCILE_REPORT_H_
