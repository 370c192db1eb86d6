#include "support/csv_text.h"

#include <string>
#include <string_view>
#include <vector>

#include "support/text_stream.h"

namespace rux::support {
namespace {

bool IsFieldBlank(char c) { return c == ' ' || c == '\t'; }

// Lists of other programs have semicolons, tabs or bars in place of the commas.
bool NeedsFieldQuotes(std::string_view text) {
  return text.find_first_of(",;\t|\"\r\n") != std::string_view::npos ||
         (!text.empty() && (IsFieldBlank(text.front()) || IsFieldBlank(text.back())));
}

}  // namespace

std::string CsvField(std::string_view text) {
  if (!NeedsFieldQuotes(text)) return std::string(text);
  std::string field = "\"";
  for (const char c : text) field.append(c == '"' ? 2 : 1, c);
  return field + '"';
}

void WriteCsvLine(const std::vector<std::string>& fields, TextStream& out) {
  const char* separator = "";
  // A line of one empty field would be an empty line.
  if (fields.size() == 1 && fields.front().empty()) out += "\"\"";
  for (const std::string& field : fields) {
    out += separator;
    out += CsvField(field);
    separator = ",";
  }
  out += "\r\n";
}

}  // namespace rux::support
