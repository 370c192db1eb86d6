// Lists of others: arbitrary bytes in every format. Each is read, or refused with one line that
// names the place; all cells are of columns, and what was read of lines of fields is read
// again when it was written.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/reading.h"
#include "fuzz/target.h"
#include "lists/csv.h"
#include "lists/formats.h"
#include "lists/list.h"
#include "support/csv_text.h"
#include "support/text_stream.h"

namespace {

using fuzz::Expect;
using fuzz::IsRead;
using rux::lists::FieldLine;
using rux::lists::List;
using rux::lists::ListCell;
using rux::lists::ListRow;

constexpr char kPath[] = "list.csv";

void ReadAs(const rux::lists::Format& format, std::string_view bytes) {
  List list;
  if (!IsRead(kPath, [&] { list = format.read(kPath, bytes); })) return;
  std::uint32_t line = 0;
  for (const ListRow& row : list.rows) {
    std::size_t next = 0;
    for (const ListCell& cell : row.cells) {
      Expect(cell.column >= next && cell.column < list.columns.size(), "cells have columns");
      next = cell.column + 1;
    }
    Expect(row.line >= line && row.line > 0, "lines go up");
    line = row.line;
  }
}

void WriteAgain(std::string_view bytes) {
  std::vector<FieldLine> lines;
  if (!IsRead(kPath, [&] { lines = rux::lists::ReadCsv(kPath, bytes, ','); })) return;
  const std::string text = rux::support::WrittenText([&](rux::support::TextStream& out) {
    for (const FieldLine& line : lines) rux::support::WriteCsvLine(line.fields, out);
  });
  const std::vector<FieldLine> again = rux::lists::ReadCsv(kPath, text, ',');
  Expect(again.size() == lines.size(), "all lines come back");
  for (std::size_t i = 0; i < lines.size(); ++i)
    Expect(again[i].fields == lines[i].fields, "all fields come back");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  for (const rux::lists::Format& format : rux::lists::Formats()) ReadAs(format, bytes);
  Expect(rux::lists::FormatFor("", bytes).read != nullptr, "every list has a format");
  WriteAgain(bytes);
  return 0;
}
