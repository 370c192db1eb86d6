#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "page/contents.h"
#include "page/coverage.h"
#include "page/grid.h"
#include "page/html.h"
#include "page/limit_bands.h"
#include "page/marks.h"
#include "page/parts.h"
#include "page/value_flow.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/model/handles.h"
#include "table/cell.h"
#include "table/columns.h"
#include "table/machine_table.h"

namespace rux::page {
namespace {

const language::SectionKind& SensorKind() { return language::KindOf(language::SECTION_SENSOR); }

// Those of every table, but for what the page shows in another way, and in the order of reading.
std::vector<table::Column> SensorColumns() {
  constexpr std::string_view kNames[] = {language::KeywordOf(language::ENTRY_ID),
                                         language::KeywordOf(language::ENTRY_TYPE),
                                         language::KeywordOf(language::ENTRY_THRESHOLD_FL),
                                         language::KeywordOf(language::ENTRY_THRESHOLD_WL),
                                         language::KeywordOf(language::ENTRY_THEORY),
                                         language::KeywordOf(language::ENTRY_THRESHOLD_WH),
                                         language::KeywordOf(language::ENTRY_THRESHOLD_FH),
                                         table::kUnitColumn,
                                         "group",
                                         "lists"};
  std::vector<table::Column> columns;
  for (const std::string_view name : kNames)
    columns.push_back(table::ColumnFor(SensorKind(), std::string(name)));
  return columns;
}

// "FH" for THRESHOLD_FH, which is explained where a pointer rests on it.
Html TitleOf(const table::Column& column) {
  constexpr std::string_view kLead = "THRESHOLD_";
  Html title;
  if (column.is_limit() && column.name.compare(0, kLead.size(), kLead) == 0) {
    title << "<abbr title=\"" << Text{column.name} << "\">"
          << Text{column.name.substr(kLead.size())} << "</abbr>";
  } else {
    title << Text{column.name};
  }
  return title;
}

void WriteScales(const LimitBands& bands, Html& out) {
  if (bands.scales().empty()) return;
  out << "<ul class=legend><li class=f>failed<li class=w>warning<li class=o>within the limits<li "
         "class=t>THEORY</ul><details><summary>Scales of the "
         "bands</summary><table><caption>Sensors "
         "of one unit share a scale; of one TYPE where no unit is stated.</caption><thead><tr><th "
         "scope=col>scale</th><th scope=col class=n>sensors</th><th scope=col class=n>from</th><th "
         "scope=col "
         "class=n>to</th></tr></thead><tbody>";
  for (const auto& [name, scale] : bands.scales()) {
    out << "<tr><th scope=row>" << Text{name} << "<td class=n>" << scale.sensors << "<td class=n>"
        << Text{ScaleEnd(scale.low)} << "<td class=n>" << Text{ScaleEnd(scale.high)} << "\n";
  }
  out << "</tbody></table></details>";
}

// That of a group may be long: a line may end after each slash.
void WritePath(std::string_view path, Html& out) {
  while (!path.empty()) {
    const std::size_t slash = std::min(path.find('/'), path.size() - 1);
    out << Text{path.substr(0, slash + 1)};
    path.remove_prefix(slash + 1);
    if (!path.empty()) out << "<wbr>";
  }
}

// Where the drawing and the value are: before what says where the sensor belongs.
bool IsPlacement(const table::Column& column) {
  return column.derived != nullptr && column.name != table::kUnitColumn;
}

class SensorRows {
 public:
  SensorRows(const Contents& contents, const LimitBands& bands)
      : contents_(contents),
        bands_(bands),
        value_(table::ColumnFor(SensorKind(), std::string(language::kPlainValue))),
        table_(table::MakeTable(contents.machine(), SensorKind(), SensorColumns())) {
    table::DropEmptyColumns(table_);
  }

  void AddTo(Grid& grid) const {
    grid.AddColumn(Html() << "name");
    AddColumns(false, grid);
    grid.AddColumn(Html() << "bands");
    grid.AddColumn(Html() << Text{value_.name});
    AddColumns(true, grid);
    if (contents_.background().tests) grid.AddColumn(Html() << "tests");
    const Thing first = contents_.Of(language::SECTION_SENSOR).begin;
    for (const table::Row& row : table_.rows) grid.AddRow(RowOf(row, first + row.subject.ordinal));
  }

 private:
  void AddColumns(bool are_placements, Grid& grid) const {
    for (const table::Column& column : table_.columns) {
      if (IsPlacement(column) != are_placements) continue;
      const bool is_number = column.is_limit() || column.is_number();
      grid.AddColumn(TitleOf(column), is_number ? Grid::Align::kNumber : Grid::Align::kText);
    }
  }

  void WriteCells(const table::Row& row, bool are_placements, Html& cells) const {
    auto column = table_.columns.begin();
    table::ForEachCell(row.cells, table_.columns.size(), [&](const table::Cell& cell) {
      const table::Column& of = *column++;
      if (IsPlacement(of) != are_placements) return;
      // In the column of limits, the expected reading is an amount like them.
      const bool is_expected = of.name == language::KeywordOf(language::ENTRY_THEORY);
      cells << "<td>";
      WritePath(is_expected && cell.number ? row.subject.quantity.AmountText(*cell.number)
                                           : table::TextOf(cell),
                cells);
    });
  }

  Html RowOf(const table::Row& row, Thing thing) const {
    Html cells;
    cells << "<tr><th scope=row>";
    WriteLink(contents_, thing, cells);
    WriteMarks(contents_, thing, cells);
    WriteCells(row, false, cells);
    cells << "<td class=b>";
    bands_.Write(row.subject.ordinal, cells);
    cells << "<td>";
    const ruxcomp::Entry value = table::EntryOf(row.subject, value_);
    if (value) WritePieces(PiecesOf(contents_, value), cells);
    WriteCells(row, true, cells);
    if (contents_.background().tests) {
      cells << "<td>";
      WriteCovered(contents_, thing, cells);
    }
    return cells;
  }

  const Contents& contents_;
  const LimitBands& bands_;
  const table::Column value_;
  table::MachineTable table_;
};

}  // namespace

void WriteSensorTable(const Contents& contents, const LimitBands& bands, Html& out) {
  const Contents::Range sensors = contents.Of(language::SECTION_SENSOR);
  if (sensors.size() == 0) return;
  Html caption;
  caption << "FL and FH: failed below and above; WL and WH: warning; THEORY: the reading that is "
             "expected.";
  Grid grid("sensors", caption);
  SensorRows(contents, bands).AddTo(grid);
  out << "<section id=sensors><h2>Sensors</h2>";
  WriteScales(bands, out);
  grid.Write(out);
  out << "</section>\n";
}

}  // namespace rux::page
