// Comma-separated values as RFC 4180 has them.
#ifndef SUPPORT_CSV_TEXT_H_
#define SUPPORT_CSV_TEXT_H_

#include <string>
#include <string_view>
#include <vector>

#include "support/text_stream.h"

namespace rux::support {

// Quoted where a reader would take it for anything else, or strip its blanks.
std::string CsvField(std::string_view text);

// With the line end, which is CRLF.
void WriteCsvLine(const std::vector<std::string>& fields, TextStream& out);

}  // namespace rux::support

#endif  // SUPPORT_CSV_TEXT_H_
