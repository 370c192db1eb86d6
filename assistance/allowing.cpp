#include "assistance/allowing.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "assistance/edit.h"
#include "reader/scanner.h"
#include "reader/script.h"
#include "reader/value.h"
#include "sources/allow_comments.h"
#include "sources/source_file.h"
#include "support/text_file.h"

namespace rux::assistance {
namespace {

using sources::AllowComment;
using sources::AllowScope;
using sources::SourceFile;

std::uint32_t OffsetIn(const SourceFile& file, std::string_view text) {
  return static_cast<std::uint32_t>(text.data() - file.text().data());
}

bool Has(support::ByteRange range, std::uint32_t offset) {
  return range.begin <= offset && offset <= range.end;
}

bool Allows(const AllowComment& comment, std::uint32_t offset, AllowScope scope) {
  return comment.scope == scope && comment.instead.empty() && Has(comment.allowed, offset);
}

// One id more in a comment that is there.
std::optional<AllowEdit> InComment(const SourceFile& file, std::uint32_t offset,
                                   const std::string& id, AllowScope scope) {
  for (const AllowComment& comment : sources::AllowCommentsOf(file)) {
    if (!Allows(comment, offset, scope)) continue;
    if (comment.ids.empty()) return AllowEdit{comment.range.end, " " + id};
    const std::string_view last = comment.ids.back();
    return AllowEdit{OffsetIn(file, last) + static_cast<std::uint32_t>(last.size()), "," + id};
  }
  return std::nullopt;
}

std::string Marked(const std::string& id) {
  return fmt::format("{} {} {}", ruxcomp::reader::kCommentSigns[0], sources::kAllowMarker, id);
}

// At the end of the line, or at the beginning of the comment that is there.
AllowEdit OnLine(const SourceFile& file, std::uint32_t offset, const std::string& id) {
  const std::uint32_t end = file.JoinedLines(file.LineAt(offset)).end;
  const std::uint32_t last = file.LineAt(end == 0 ? 0 : end - 1);
  const std::string_view line = ruxcomp::reader::Trim(file.Line(last));
  const std::string_view taken = ruxcomp::reader::WithoutComment(line);
  const std::string_view rest = line.substr(std::min(taken.size(), line.size()));
  const std::size_t sign = rest.find_first_of(
      std::string_view(ruxcomp::reader::kCommentSigns, std::size(ruxcomp::reader::kCommentSigns)));
  if (sign == std::string_view::npos) {
    const auto at = OffsetIn(file, line) + static_cast<std::uint32_t>(line.size());
    return {at, "  " + Marked(id)};
  }
  const auto at = OffsetIn(file, rest) + static_cast<std::uint32_t>(sign) + 1;
  return {at, Marked(id).substr(1) + " "};
}

AllowEdit NewComment(const SourceFile& file, std::uint32_t offset, const std::string& id,
                     AllowScope scope) {
  const std::string line_end(LineEndOf(file));
  if (scope == AllowScope::kLine) return OnLine(file, offset, id);
  if (scope == AllowScope::kFile) {
    return {BeginOf(file), Marked(id) + line_end + line_end};
  }
  const ruxcomp::reader::Section* section = file.SectionAt(file.LineAt(offset));
  if (section == nullptr) return {offset, ""};
  return {file.JoinedLines(section->line).end, line_end + Marked(id)};
}

// Whether the text with the edit allows what it is to allow.
bool IsOfUse(const SourceFile& file, const AllowEdit& edit, std::uint32_t offset,
             const std::string& id, AllowScope scope) {
  std::string text = file.text();
  text.insert(edit.offset, edit.text);
  const SourceFile edited(file.library_path(), file.path(),
                          std::make_shared<ruxcomp::reader::Script>(
                              std::move(text), [](const ruxcomp::reader::Problem&) {}));
  const auto moved =
      offset + (edit.offset <= offset ? static_cast<std::uint32_t>(edit.text.size()) : 0);
  const std::vector<AllowComment> comments = sources::AllowCommentsOf(edited);
  return std::any_of(comments.begin(), comments.end(), [&](const AllowComment& comment) {
    const bool has_id = std::find(comment.ids.begin(), comment.ids.end(), id) != comment.ids.end();
    return has_id && Allows(comment, moved, scope);
  });
}

}  // namespace

std::optional<AllowEdit> AllowAt(const SourceFile& file, std::uint32_t offset,
                                 const std::string& id, AllowScope scope) {
  if (file.text().empty()) return std::nullopt;
  const auto added = InComment(file, offset, id, scope);
  AllowEdit edit = added ? *added : NewComment(file, offset, id, scope);
  if (!IsOfUse(file, edit, offset, id, scope)) return std::nullopt;
  return edit;
}

}  // namespace rux::assistance
