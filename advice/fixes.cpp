#include "advice/fixes.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "reader/value.h"
#include "ruxcomp/language/keys.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_set.h"
#include "support/text_file.h"

namespace rux::advice {
namespace {

namespace language = ruxcomp::language;
namespace rows = ruxcomp::findings::rows;
using diagnostics::Diagnostic;
using diagnostics::Fix;
using support::ByteRange;

constexpr std::size_t kNoPlace = std::string_view::npos;

// What a diagnostic is about, as it is in the file.
struct Mistake {
  std::string_view text;
  ByteRange range;
  std::string section;  // its name; empty: none is known
  bool is_error;
};

ByteRange Before(const Mistake& mistake, std::size_t at = 0) {
  const auto place = mistake.range.begin + static_cast<std::uint32_t>(at);
  return {place, place};
}
ByteRange After(const Mistake& mistake) { return {mistake.range.end, mistake.range.end}; }

// [SENSOR
std::optional<Fix> CloseHeader(const Mistake& mistake) {
  if (language::FindKind(ruxcomp::reader::Trim(mistake.text.substr(1))) == nullptr) return {};
  return Fix{After(mistake), "]", true};
}

// [SENSOR] the one in front. An item may be meant to follow on a line of its own.
std::optional<Fix> MakeComment(const Mistake& mistake) {
  return Fix{Before(mistake), "# ", mistake.text.find('=') == kNoPlace};
}

// MODEL = "Rack. What follows may be meant to be outside.
std::optional<Fix> CloseQuote(const Mistake& mistake) {
  return Fix{After(mistake), "\"", mistake.text.find_first_of("#;,") == kNoPlace};
}

// RUXLOOP 1000
std::optional<Fix> InsertEquals(const Mistake& mistake) {
  const language::SectionKind* kind = language::FindKind(mistake.section);
  const std::size_t blank = mistake.text.find_first_of(" \t");
  if (kind == nullptr || blank == kNoPlace || mistake.text.find('=') != kNoPlace) return {};
  const std::size_t value = mistake.text.find_first_not_of(" \t", blank);
  const std::size_t row = language::FindKeyRow(*kind, mistake.text.substr(0, blank), 0);
  if (value == kNoPlace || row >= kind->templates.size()) return {};
  return Fix{Before(mistake, value), "= ", mistake.is_error};
}

struct FixRow {
  const ruxcomp::findings::MessageRow* row;
  std::optional<Fix> (*make)(const Mistake& mistake);
};
constexpr FixRow kFixRows[] = {
    {&rows::kUnclosedHeader, CloseHeader}, {&rows::kTextAfterHeader, MakeComment},
    {&rows::kUnclosedQuote, CloseQuote},   {&rows::kInvalidEntryName, InsertEquals},
    {&rows::kUnknownEntry, InsertEquals},
};

}  // namespace

void AddFix(const sources::SourceSet& sources, Diagnostic& diagnostic) {
  const sources::Opening* opening = sources.FirstOpeningOf(diagnostic.at.file);
  if (opening == nullptr) return;
  const ByteRange range = diagnostic.at.range;
  const std::string_view text =
      std::string_view(opening->file->text()).substr(range.begin, range.end - range.begin);
  // What backslashes join is left to people.
  if (text.empty() || text.find('\n') != kNoPlace) return;
  for (const FixRow& each : kFixRows) {
    if (each.row != diagnostic.row) continue;
    diagnostic.fix = each.make({text, range, diagnostic.section.value_or(""),
                                diagnostic.row->severity == diagnostics::Severity::kError});
  }
}

}  // namespace rux::advice
