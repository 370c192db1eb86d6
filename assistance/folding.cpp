#include "assistance/folding.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "assistance/place.h"
#include "index/index.h"
#include "index/records.h"
#include "reader/value.h"
#include "sources/source_file.h"

namespace rux::assistance {
namespace {

void Add(const sources::SourceFile& file, Fold::Kind kind, ByteRange range,
         std::vector<Fold>& folds) {
  const std::uint32_t first = file.LineAt(range.begin);
  const std::uint32_t last = file.LineAt(range.end - 1);
  if (last > first) folds.push_back({kind, first, last});
}

void AddComments(const sources::SourceFile& file, std::vector<Fold>& folds) {
  std::uint32_t first = 0;  // of the comment; 0: there is none
  for (std::uint32_t line = 1; line <= file.line_count() + 1; ++line) {
    if (ruxcomp::reader::IsCommentLine(file.Line(line))) {
      if (first == 0) first = line;
      continue;
    }
    if (first != 0 && line - 1 > first) folds.push_back({Fold::Kind::kComment, first, line - 1});
    first = 0;
  }
}

}  // namespace

std::vector<Fold> FoldsOf(const index::Index& index, Id file) {
  const sources::SourceFile& text = *index.files()[file];
  std::vector<Fold> folds;
  for (const Id section : index.SectionsOf(file)) {
    Add(text, Fold::Kind::kSection, index.RangeOfSection(section), folds);
    for (const index::ItemRecord& item : index.ItemsOf(section)) {
      const auto id = static_cast<Id>(&item - index.items().data());
      Add(text, Fold::Kind::kItem, index.RangeOfItem(id), folds);
    }
  }
  AddComments(text, folds);
  std::stable_sort(folds.begin(), folds.end(),
                   [](const Fold& a, const Fold& b) { return a.first_line < b.first_line; });
  return folds;
}

}  // namespace rux::assistance
