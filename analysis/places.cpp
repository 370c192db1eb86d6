#include "analysis/places.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/findings.h"
#include "diagnostics/diagnostic.h"
#include "protocol/positions.h"
#include "reader/byte_order_mark.h"
#include "reader/texts.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/folders.h"
#include "support/text_file.h"
#include "workspace/documents.h"

namespace rux::analysis {
namespace {

namespace fs = std::filesystem;

}  // namespace

Files::Files(const sources::SourceSet& sources, const std::vector<std::string>& paths,
             const workspace::Documents& documents, protocol::Encoding encoding)
    : documents_(documents), encoding_(encoding) {
  for (const sources::Opening& opening : sources.openings()) {
    const std::string& path = opening.file->path();
    files_[NumberOf(path)].is_read = true;
    sources_.emplace(opening.file, opening.file);
    by_path_.emplace(path, opening.file);
    if (ruxcomp::reader::Texts::Find(path) != nullptr) open_.insert(opening.file);
  }
  for (const std::string& path : paths) NumberOf(path);
}

File Files::FileAt(const std::string& path) const {
  const workspace::Document* document = documents_.Find(path);
  if (document != nullptr && !document->is_file()) return {path, path, false};
  return {fs::absolute(path).lexically_normal().string(), support::WholeName(path), false};
}

std::size_t Files::NumberOf(const std::string& path) {
  const auto known = numbers_.find(path);
  if (known != numbers_.end()) return known->second;
  File file = FileAt(path);
  const auto [place, is_new] = whole_names_.try_emplace(file.whole_name, files_.size());
  if (is_new) files_.push_back(std::move(file));
  numbers_.emplace(path, place->second);
  return place->second;
}

const Files::Lines& Files::LinesOf(const sources::SourceFile& file) {
  const auto known = lines_.find(&file);
  if (known != lines_.end()) return known->second;
  const std::string_view text = file.text();
  const bool is_open = open_.count(&file) != 0;
  const bool has_mark = !is_open && ruxcomp::reader::StartsWithMark(text);
  const std::uint32_t mark = has_mark ? ruxcomp::reader::kMark.size() : 0;
  return lines_.emplace(&file, Lines{mark, protocol::TextLines(text.substr(mark))}).first->second;
}

Place Files::PlaceOf(const sources::SourceFile& file, support::ByteRange bytes) {
  const Lines& lines = LinesOf(file);
  const support::ByteRange shown = lines.Shown(bytes);
  return {NumberOf(file.path()), lines.lines.RangeOf(shown, encoding_), shown,
          file.text().substr(bytes.begin, bytes.end - bytes.begin)};
}

protocol::Range Files::RangeOf(const sources::SourceFile& file, support::ByteRange bytes) {
  const Lines& lines = LinesOf(file);
  return lines.lines.RangeOf(lines.Shown(bytes), encoding_);
}

std::uint32_t Files::OffsetOf(const sources::SourceFile& file, protocol::Position position) {
  const Lines& lines = LinesOf(file);
  return lines.mark + static_cast<std::uint32_t>(lines.lines.OffsetOf(position, encoding_));
}

Place Files::PlaceOf(const diagnostics::Location& at) {
  const auto known = sources_.find(at.file);
  if (known != sources_.end()) {
    if (!at.excerpt) return PlaceOf(*known->second, {at.range.begin, at.range.begin});
    const auto begin =
        static_cast<std::uint32_t>(at.excerpt->meant().data() - known->second->text().data());
    return PlaceOf(*known->second, {begin, begin + static_cast<std::uint32_t>(at.excerpt->length)});
  }
  const auto named = by_path_.find(at.path);
  if (named == by_path_.end() || at.first_line == 0) return {NumberOf(at.path), {}, {}, {}};
  return PlaceOf(*named->second, named->second->RangeOfLine(at.first_line));
}

}  // namespace rux::analysis
