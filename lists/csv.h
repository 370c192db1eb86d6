// Lists in lines of fields.
#ifndef LISTS_CSV_H_
#define LISTS_CSV_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "lists/list.h"

namespace rux::lists {

// A line of a file, in fields; in double quotes it may go on for several.
struct FieldLine {
  std::uint32_t number;  // of the first one, from 1
  std::vector<std::string> fields;
};

// What RFC 4180 says of the file: fields between separators, in double quotes where they have one
// of these, a line end or a double quote, which is doubled. Empty lines are passed over; lines end
// in LF or CRLF. Throws a Failure that names the line: for a quote without its end, text after one,
// or a double quote in a field without quotes.
std::vector<FieldLine> ReadCsv(const std::string& path, std::string_view text, char separator);

// Lines of fields between bars, without quotes; blanks around the fields are dropped.
std::vector<FieldLine> ReadBars(std::string_view text);

// The separator of a file whose first line is a header: the most frequent one of comma, semicolon
// and tab, which programs for spreadsheets write by country.
char SeparatorOf(std::string_view text);

std::string_view FirstLine(std::string_view text);

// Lines whose first one has the names of the columns. Throws a Failure when a line has more fields
// than that.
List WithHeader(const std::string& path, std::vector<FieldLine> lines);
// The same for a file without such a line. Fields beyond the given columns are dropped.
List WithColumns(std::vector<std::string> columns, std::vector<FieldLine> lines);

}  // namespace rux::lists

#endif  // LISTS_CSV_H_
