#include "advice/places.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "advice/message_advice.h"
#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "findings/origin.h"
#include "reader/script.h"
#include "reader/value.h"
#include "run/log.h"
#include "ruxcomp/language/paths.h"
#include "sources/source_set.h"
#include "support/safe_text.h"

namespace rux::advice {
namespace {

using diagnostics::Diagnostic;
using sources::Opening;
using sources::OriginSpot;

std::string BaseNameOf(const Opening& opening) {
  return std::string(ruxcomp::language::BaseNameOf(opening.file->library_path()));
}

}  // namespace

Places::Places(const sources::SourceSet& sources, std::string script)
    : sources_(sources), script_(std::move(script)) {}

void Places::Locate(const run::Finding& finding, Diagnostic& diagnostic) {
  // Remarks are about the run.
  if (finding.row->severity == ruxcomp::findings::Severity::kNote) return;
  const bool is_located = IsAt(finding, diagnostic) &&
                          (Locate(finding.origin, AdviceFor(finding.row).underline, diagnostic) ||
                           LocateProblem(finding, diagnostic));
  if (is_located) return;
  if (finding.place) return Locate(*finding.place, diagnostic);
  diagnostic.at.path = script_;
}

// A foreign plug-in may have opened other scripts, and found something else in them.
bool Places::IsAt(const run::Finding& finding, const Diagnostic& diagnostic) const {
  const OriginSpot spot = sources_.At(finding.origin);
  if (spot.opening == nullptr) return false;
  const auto& section = diagnostic.section;
  if (section && spot.section != nullptr && *section != support::Excerpted(spot.section->name)) {
    return false;
  }
  // A finding without a place has neither a line nor a file.
  if (!finding.place || finding.place->line == 0) return true;
  const std::uint32_t line = finding.place->line;
  const bool is_line = spot.section == nullptr || line == spot.section->line ||
                       (spot.item != nullptr && line == spot.item->line);
  return is_line && BaseNameOf(*spot.opening) == finding.place->file;
}

bool Places::Locate(const ruxcomp::findings::Origin& origin, Underline underline,
                    Diagnostic& diagnostic) {
  const OriginSpot spot = sources_.At(origin);
  const auto range = RangeOf(spot, origin.part, underline);
  if (!range) return false;
  diagnostic.at = diagnostics::LocationIn(*spot.opening->file, *range);
  diagnostic.included_from = IncludesOf(*spot.opening);
  return true;
}

// The reader reports the problems of a script in the order in which it notes them.
bool Places::LocateProblem(const run::Finding& finding, Diagnostic& diagnostic) {
  if (finding.origin.section != ruxcomp::findings::Origin::kNone || !finding.place) return false;
  const Opening& opening = *sources_.At(finding.origin).opening;
  const std::size_t next = next_problem_[finding.origin.script]++;
  if (next >= opening.problems.size()) return false;
  const ruxcomp::reader::Problem& problem = opening.problems[next];
  if (problem.line != finding.place->line) return false;
  diagnostic.at = diagnostics::LocationIn(*opening.file, {problem.range.begin, problem.range.end});
  diagnostic.at.first_line = problem.line;
  diagnostic.included_from = IncludesOf(opening);
  return true;
}

void Places::Locate(const run::Place& place, Diagnostic& diagnostic) {
  diagnostic.at.first_line = place.line;
  const Opening* opening = FindNamed(place.file);
  if (opening == nullptr) {
    const bool is_script =
        place.file == ruxcomp::language::BaseNameOf(ruxcomp::language::ToLibraryPath(script_));
    diagnostic.at.path = is_script ? script_ : place.file;
    return;
  }
  diagnostic.included_from = IncludesOf(*opening);
  diagnostic.at.path = opening->file->path();
  if (opening->file->Line(place.line).empty()) return;
  diagnostic.at.file = opening->file;
  diagnostic.at.range = opening->file->RangeAt(place.line);
}

void Places::AddIncludes(Diagnostic& diagnostic) const {
  const Opening* opening = sources_.FirstOpeningOf(diagnostic.at.file);
  if (opening != nullptr) diagnostic.included_from = IncludesOf(*opening);
}

std::optional<std::string_view> Places::PartAt(const ruxcomp::findings::Origin& origin) {
  const ruxcomp::reader::Item* item = sources_.At(origin).item;
  if (item == nullptr || origin.part >= PartsOf(*item).size()) return std::nullopt;
  return PartsOf(*item)[origin.part];
}

std::optional<support::ByteRange> Places::RangeOf(const OriginSpot& spot, std::uint32_t part,
                                                  Underline underline) {
  if (spot.section == nullptr) return std::nullopt;
  const sources::SourceFile& file = *spot.opening->file;
  if (spot.item == nullptr || underline == Underline::kHeader) {
    const bool is_name = underline == Underline::kSectionName && !spot.section->name.empty();
    return file.RangeOf(is_name ? spot.section->name : spot.section->header);
  }
  const std::vector<std::string_view>& parts = PartsOf(*spot.item);
  if (part >= parts.size()) return file.RangeOf(spot.item->key);
  const support::ByteRange range = file.RangeOf(parts[part]);
  if (underline != Underline::kToLastPart) return range;
  return support::ByteRange{range.begin, file.RangeOf(parts.back()).end};
}

const std::vector<std::string_view>& Places::PartsOf(const ruxcomp::reader::Item& item) {
  if (split_ != &item) {
    parts_ = ruxcomp::reader::Parts(item);
    split_ = &item;
  }
  return parts_;
}

std::vector<diagnostics::Note> Places::IncludesOf(const Opening& opening) const {
  // More of them help no further.
  constexpr std::size_t kMost = 10;
  std::vector<diagnostics::Note> includes;
  for (OriginSpot at = sources_.IncluderOf(opening); at.item != nullptr;
       at = sources_.IncluderOf(*at.opening)) {
    if (includes.size() == kMost) {
      includes.push_back({"and so on", {}});
      break;
    }
    includes.push_back({"included from here", {at.opening->file->path(), at.item->line}});
  }
  return includes;
}

const Opening* Places::FindNamed(const std::string& base_name) {
  if (by_base_name_.empty()) {
    for (const Opening& opening : sources_.openings()) {
      by_base_name_.try_emplace(BaseNameOf(opening), &opening);
    }
  }
  const auto found = by_base_name_.find(base_name);
  return found == by_base_name_.end() ? nullptr : found->second;
}

}  // namespace rux::advice
