#include "sources/source_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "reader/script.h"
#include "reader/value.h"
#include "ruxcomp/language/paths.h"
#include "support/text_file.h"

namespace rux::sources {

void SourceFile::DropSections() const {
  script_->DropSections();
  is_dropped_ = true;
}

void SourceFile::ScanAgain() const {
  script_->ScanAgain();
  is_dropped_ = false;
}

std::string_view SourceFile::Line(std::uint32_t line) const {
  return line == 0 || line > line_count() ? std::string_view() : script_->Line(line);
}

support::ByteRange SourceFile::JoinedLines(std::uint32_t line) const {
  const auto goes_on = [&](std::uint32_t above) {
    const std::string_view text = Line(above);
    return !text.empty() && text.back() == '\\';
  };
  while (line > 1 && goes_on(line - 1)) --line;
  const ruxcomp::reader::Range range = script_->JoinedLines(line);
  return {range.begin, range.end};
}

namespace {

bool IsBefore(std::uint32_t line, const ruxcomp::reader::Section& section) {
  return line < section.line;
}
bool IsBeforeItem(std::uint32_t line, const ruxcomp::reader::Item& item) {
  return line < item.line;
}

}  // namespace

const ruxcomp::reader::Section* SourceFile::SectionAt(std::uint32_t line) const {
  const auto after = std::upper_bound(sections().begin(), sections().end(), line, IsBefore);
  return after == sections().begin() ? nullptr : &after[-1];
}

std::optional<SourceSpot> SourceFile::At(std::uint32_t line) const {
  const ruxcomp::reader::Section* section = SectionAt(line);
  if (section == nullptr) return std::nullopt;
  if (section->line == line) return SourceSpot{section, nullptr};
  const ruxcomp::reader::Item* end = section->items + section->item_count;
  const ruxcomp::reader::Item* after = std::upper_bound(section->items, end, line, IsBeforeItem);
  if (after == section->items || after[-1].line != line) return std::nullopt;
  return SourceSpot{section, after - 1};
}

support::ByteRange SourceFile::RangeOf(std::string_view view) const {
  const ruxcomp::reader::Range range = script_->RangeOf(view);
  return {range.begin, range.end};
}

support::ByteRange SourceFile::RangeAt(std::uint32_t line) const {
  const std::optional<SourceSpot> spot = At(line);
  if (!spot) return RangeOfLine(line);
  return RangeOf(spot->item != nullptr ? spot->item->key : spot->section->header);
}

support::ByteRange SourceFile::RangeOfLine(std::uint32_t line) const {
  const std::string_view whole = Line(line);
  if (whole.empty()) return {};
  const std::string_view trimmed = ruxcomp::reader::Trim(whole);
  const auto begin = LineStart(line) + static_cast<std::uint32_t>(
                                           trimmed.empty() ? 0 : trimmed.data() - whole.data());
  return {begin, begin + static_cast<std::uint32_t>(trimmed.size())};
}

std::string ToOpenablePath(const std::string& library_path) {
  struct stat status;
  std::string path = ruxcomp::language::WithSlashes(library_path);
  return path != library_path && stat(library_path.c_str(), &status) == 0 ? library_path : path;
}

std::string ToShownPath(const std::string& library_path) {
  namespace fs = std::filesystem;
  const fs::path path = ToOpenablePath(library_path);
  const fs::path normal = path.lexically_normal();
  const auto folder_of = [](const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
  };
  std::error_code ignored;
  // An argument that begins with a dash means something else.
  const bool is_name = normal.string().substr(0, 1) != "-";
  const bool is_same = is_name && path.filename() == normal.filename() &&
                       fs::equivalent(folder_of(path), folder_of(normal), ignored);
  return (is_same ? normal : path).string();
}

}  // namespace rux::sources
