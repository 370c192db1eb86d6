#include "advice/allowances.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/registry.h"
#include "findings/message_row.h"
#include "rules/rule_report.h"
#include "sources/allow_comments.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/safe_text.h"
#include "support/text_file.h"

namespace rux::advice {
namespace {

using diagnostics::Diagnostic;
using diagnostics::MessageRow;
using diagnostics::Severity;
using sources::AllowScope;

// The one of these, which are in order and do not overlap, that has the byte.
template <class Allowed>
Allowed* FindAt(const std::vector<Allowed*>& places, std::uint32_t at) {
  const auto after = std::upper_bound(places.begin(), places.end(), at,
                                      [](std::uint32_t wanted, const Allowed* place) {
                                        return wanted < place->comment->allowed.begin;
                                      });
  if (after == places.begin() || at > after[-1]->comment->allowed.end) return nullptr;
  return after[-1];
}

std::string_view WordOf(AllowScope scope) {
  if (scope == AllowScope::kLine) return "line";
  return scope == AllowScope::kSection ? "section" : "file";
}

}  // namespace

Allowances::Allowances(const sources::SourceSet& sources, const diagnostics::Registry& registry)
    : registry_(registry) {
  std::set<const sources::SourceFile*> seen;
  for (const sources::Opening& opening : sources.openings()) {
    if (script_ == nullptr) script_ = opening.file;
    if (!seen.insert(opening.file).second) continue;
    std::vector<sources::AllowComment> found = sources::AllowCommentsOf(*opening.file);
    if (!found.empty()) comments_.emplace_back(opening.file, std::move(found));
  }
  for (const auto& [file, comments] : comments_) {
    for (const sources::AllowComment& comment : comments) Add(*file, comment);
  }
}

void Allowances::Add(const sources::SourceFile& file, const sources::AllowComment& comment) {
  if (comment.ids.empty()) all_.push_back({&file, &comment, {}, nullptr});
  for (const std::string_view id : comment.ids) {
    const MessageRow* row = registry_.Find(id);
    const bool is_warning = row != nullptr && row->severity == Severity::kWarning;
    all_.push_back({&file, &comment, id, is_warning ? row : nullptr});
    Allowed& added = all_.back();
    if (!is_warning || comment.scope == AllowScope::kNowhere) continue;
    rows_.insert(row);
    Places& places = places_[{&file, row}];
    if (comment.scope == AllowScope::kLine) places.lines.push_back(&added);
    if (comment.scope == AllowScope::kSection) places.sections.push_back(&added);
    if (comment.scope == AllowScope::kFile) places.file = &added;
  }
}

bool Allowances::Takes(const Diagnostic& warning) {
  Allowed* allowed = Find(warning);
  if (allowed != nullptr) allowed->is_used = true;
  return allowed != nullptr;
}

// What is about the script as a whole has no bytes.
Allowances::Allowed* Allowances::Find(const Diagnostic& warning) {
  const support::TextFile* file = warning.at.file;
  const auto found = places_.find({file != nullptr ? file : script_, warning.row});
  if (found == places_.end()) return nullptr;
  const Places& places = found->second;
  Allowed* allowed = nullptr;
  if (file != nullptr) {
    allowed = FindAt(places.lines, warning.at.range.begin);
    if (allowed == nullptr) allowed = FindAt(places.sections, warning.at.range.begin);
  }
  return allowed != nullptr ? allowed : places.file;
}

rules::Warnings Allowances::Unused(const Knows& knows, bool is_second) const {
  rules::Warnings unused;
  for (const Allowed& allowed : all_) {
    if (allowed.is_used || (allowed.row == &kUnusedAllow) != is_second) continue;
    const bool may_be_used =
        allowed.row != nullptr && allowed.comment->scope != AllowScope::kNowhere;
    if (may_be_used && !knows(*allowed.file, *allowed.row)) continue;
    Diagnostic& warning = unused.kept.emplace_back();
    warning.row = &kUnusedAllow;
    warning.severity = kUnusedAllow.severity;
    warning.text = WhyUnused(allowed);
    warning.at = diagnostics::LocationIn(*allowed.file, allowed.id.empty()
                                                            ? allowed.comment->range
                                                            : allowed.file->RangeOf(allowed.id));
    if (may_be_used) warning.fix = RemovalOf(allowed);
  }
  return unused;
}

// Of the id, with its comma, or else of the comment; what follows for people stays.
std::optional<diagnostics::Fix> Allowances::RemovalOf(const Allowed& allowed) {
  const sources::SourceFile& file = *allowed.file;
  const sources::AllowComment& comment = *allowed.comment;
  const auto range_of = [&](std::string_view id) { return file.RangeOf(id); };
  if (comment.ids.size() > 1) {
    const auto at = std::find_if(comment.ids.begin(), comment.ids.end(), [&](std::string_view id) {
      return id.data() == allowed.id.data();
    });
    const bool is_first = at == comment.ids.begin();
    const support::ByteRange removed =
        is_first ? support::ByteRange{range_of(*at).begin, range_of(at[1]).begin}
                 : support::ByteRange{range_of(at[-1]).end, range_of(*at).end};
    return diagnostics::Fix{removed, "", true};
  }
  const std::uint32_t line = file.LineAt(comment.range.begin);
  const std::uint32_t start = file.LineStart(line);
  const std::string_view text = file.Line(line);
  const std::size_t rest = text.find_first_not_of(":; \t", range_of(allowed.id).end - start);
  if (rest != std::string_view::npos) {
    return diagnostics::Fix{
        {comment.range.begin, start + static_cast<std::uint32_t>(rest)}, "", true};
  }
  const std::size_t before = text.find_last_not_of("#; \t", comment.range.begin - start - 1);
  const std::size_t begin = before == std::string_view::npos ? 0 : before + 1;
  // Then the backslash would join the next line.
  if (begin > 0 && text[before] == '\\') return std::nullopt;
  return diagnostics::Fix{
      {start + static_cast<std::uint32_t>(begin), start + static_cast<std::uint32_t>(text.size())},
      "",
      true};
}

std::string Allowances::WhyUnused(const Allowed& allowed) const {
  if (const std::string_view instead = allowed.comment->instead; !instead.empty()) {
    return fmt::format("expected {} and the id of a warning, found {}", sources::kAllowMarker,
                       instead);
  }
  const std::string id = support::Shortened(allowed.id);
  if (id.empty()) return "expected the id of a warning after allow";
  if (allowed.row == nullptr) {
    const MessageRow* row = registry_.Find(allowed.id);
    if (row == nullptr) return registry_.UnknownText(id);
    return fmt::format("{} is not a warning: {}s cannot be allowed", id,
                       ruxcomp::findings::WordOf(row->severity));
  }
  if (allowed.comment->scope == AllowScope::kNowhere) {
    return "this comment allows nothing: put it at the end of a line, directly above or below a "
           "section header, or above the first section";
  }
  return fmt::format("the {} has no {} to allow", WordOf(allowed.comment->scope), id);
}

}  // namespace rux::advice
