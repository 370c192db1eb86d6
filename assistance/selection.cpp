#include "assistance/selection.h"

#include <cstdint>
#include <vector>

#include "assistance/place.h"
#include "index/index.h"
#include "index/spot.h"
#include "reader/script.h"
#include "sources/source_file.h"

namespace rux::assistance {

std::vector<ByteRange> SelectionsAt(const Place& at) {
  const sources::SourceFile& file = *at.index.files()[at.file];
  const index::Spot spot = index::SpotAt(at.index, at.file, at.offset);
  std::vector<ByteRange> ranges;
  const auto add = [&](ByteRange range) {
    const bool has_place = range.begin <= at.offset && at.offset <= range.end;
    if (!has_place || range.begin == range.end) return;
    const bool is_same =
        !ranges.empty() && ranges.back().begin == range.begin && ranges.back().end == range.end;
    const bool has_last =
        ranges.empty() || (range.begin <= ranges.back().begin && ranges.back().end <= range.end);
    if (!is_same && has_last) ranges.push_back(range);
  };
  add(spot.text);
  if (spot.item != kNone) {
    const ruxcomp::reader::Item& item = *at.index.items()[spot.item].item;
    if (!item.value.empty()) add(file.RangeOf(item.value));
    add(at.index.RangeOfItem(spot.item));
  }
  if (spot.section != kNone) {
    add(file.RangeOf(at.index.sections()[spot.section].section->header));
    add(at.index.RangeOfSection(spot.section));
  }
  add({0, static_cast<std::uint32_t>(file.text().size())});
  return ranges;
}

}  // namespace rux::assistance
