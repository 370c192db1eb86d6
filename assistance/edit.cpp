#include "assistance/edit.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "assistance/new_name.h"
#include "assistance/place.h"
#include "index/index.h"
#include "index/spot.h"
#include "reader/byte_order_mark.h"
#include "sources/source_file.h"

namespace rux::assistance {
namespace {

// Whether it is a part in quotes, which may begin on the line above.
bool IsQuoted(const index::Index& index, const Location& at, Id item) {
  const sources::SourceFile& file = *index.files()[at.file];
  const std::string_view value = index.items()[item].item->value;
  const std::vector<std::string_view> parts = index::PartsOf(index, item);
  return std::any_of(parts.begin(), parts.end(), [&](std::string_view part) {
    const bool is_here = Location{at.file, file.RangeOf(part)} == at;
    return is_here && part.data() != value.data() && *(part.data() - 1) == '"';
  });
}

}  // namespace

std::string_view LineEndOf(const sources::SourceFile& file) {
  return file.text().find("\r\n") == std::string::npos ? "\n" : "\r\n";
}

std::uint32_t BeginOf(const sources::SourceFile& file) {
  const std::size_t size = file.text().size();
  return static_cast<std::uint32_t>(size - ruxcomp::reader::WithoutMark(file.text()).size());
}

Edit NewPart(const index::Index& index, const Location& at, Id item, std::string_view text) {
  const bool needs_quotes = NeedsQuotes(text) && !IsQuoted(index, at, item);
  return {at, needs_quotes ? fmt::format("\"{}\"", text) : std::string(text)};
}

Edit LinesAfter(const index::Index& index, Id section, const std::vector<std::string>& lines) {
  const Id number = index.sections()[section].file;
  const sources::SourceFile& file = *index.files()[number];
  const std::uint32_t last = index.RangeOfSection(section).end - 1;
  const std::uint32_t end = file.JoinedLines(file.LineAt(last)).end;
  std::string text;
  for (const std::string& line : lines) text.append(LineEndOf(file)).append(line);
  return {{number, {end, end}}, text};
}

}  // namespace rux::assistance
