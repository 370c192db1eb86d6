#include "index/spot.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "index/index.h"
#include "index/part_use.h"
#include "index/records.h"
#include "reader/scanner.h"
#include "reader/script.h"
#include "reader/value.h"
#include "sources/source_file.h"
#include "support/text_file.h"

namespace rux::index {
namespace {

using sources::SourceFile;

// An empty range, or one that ends at the offset, has it too.
bool Has(support::ByteRange range, std::uint32_t offset) {
  return range.begin <= offset && offset <= range.end;
}

// The last section of the file that begins before the offset; kNone: there is none.
Id SectionBefore(const Index& index, Id file, std::uint32_t offset) {
  const std::vector<Id>& sections = index.SectionsOf(file);
  const SourceFile& text = *index.files()[file];
  const auto after =
      std::upper_bound(sections.begin(), sections.end(), offset, [&](std::uint32_t at, Id section) {
        return at < text.RangeOf(index.sections()[section].section->header).begin;
      });
  return after == sections.begin() ? kNone : after[-1];
}

Id ItemBefore(const Index& index, Id section, std::uint32_t offset) {
  const Span<ItemRecord> items = index.ItemsOf(section);
  const SourceFile& text = *index.files()[index.sections()[section].file];
  const ItemRecord* after = std::upper_bound(items.begin(), items.end(), offset,
                                             [&](std::uint32_t at, const ItemRecord& item) {
                                               return at < text.RangeOf(item.item->key).begin;
                                             });
  return after == items.begin() ? kNone : static_cast<Id>(after - 1 - index.items().data());
}

// Whether the offset is on one of the lines that backslashes join to that of another one before it.
bool IsOnLineOf(const SourceFile& text, std::uint32_t before, std::uint32_t offset) {
  return offset <= text.JoinedLines(text.LineAt(before)).end;
}

// Whether a comment begins on the line before the offset.
bool IsInComment(const SourceFile& text, std::uint32_t offset) {
  std::string_view before = std::string_view(text.text()).substr(0, offset);
  before.remove_prefix(before.rfind('\n') + 1);  // npos + 1 is 0
  if (ruxcomp::reader::IsCommentLine(before)) return true;
  return ruxcomp::reader::WithoutComment(before).size() < ruxcomp::reader::Trim(before).size();
}

// The part of an item's value that the offset is in or after; the parts of a value that is missing
// are one empty part.
void FillPart(const Index& index, const SourceFile& text, std::uint32_t offset, Spot& spot) {
  const ItemRecord& item = index.items()[spot.item];
  const std::vector<std::string_view> parts = PartsOf(index, spot.item);
  spot.kind = Spot::Kind::kPart;
  spot.text = {offset, offset};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const support::ByteRange range = text.RangeOf(parts[i]);
    if (i > 0 && range.begin > offset) break;
    spot.part = static_cast<std::uint32_t>(i);
    spot.text = Has(range, offset) ? range : support::ByteRange{offset, offset};
  }
  const auto* record = index.RecordOf(item.entry, parts.data(), parts.size());
  spot.use = UseOfPart(index.sections()[spot.section].kind->source, item.entry, record, spot.part);
}

void FillItem(const Index& index, const SourceFile& text, std::uint32_t offset, Spot& spot) {
  const ruxcomp::reader::Item& item = *index.items()[spot.item].item;
  const support::ByteRange key = text.RangeOf(item.key);
  const std::string& bytes = text.text();
  const std::size_t equals = bytes.find('=', key.end);
  const bool is_in_value = equals != std::string::npos && equals < offset &&
                           IsOnLineOf(text, key.begin, static_cast<std::uint32_t>(equals));
  if (is_in_value) return FillPart(index, text, offset, spot);
  if (!Has(key, offset)) return;
  spot.kind = Spot::Kind::kKey;
  spot.text = key;
}

}  // namespace

std::vector<std::string_view> PartsOf(const Index& index, Id item) {
  return ruxcomp::reader::Parts(*index.items()[item].item);
}

Spot SpotAt(const Index& index, Id file, std::uint32_t offset) {
  const SourceFile& text = *index.files()[file];
  Spot spot;
  spot.section = SectionBefore(index, file, offset);
  if (IsInComment(text, offset)) return spot;
  if (spot.section != kNone) {
    const SectionRecord& section = index.sections()[spot.section];
    const support::ByteRange header = text.RangeOf(section.section->header);
    if (IsOnLineOf(text, header.begin, offset)) {
      if (offset == header.begin || !Has(header, offset)) return spot;
      spot.kind = Spot::Kind::kHeader;
      spot.text = section.section->name.empty() ? support::ByteRange{offset, offset}
                                                : text.RangeOf(section.section->name);
      return spot;
    }
    if (section.kind == nullptr) return spot;
    spot.item = ItemBefore(index, spot.section, offset);
    if (spot.item != kNone) {
      const support::ByteRange key = text.RangeOf(index.items()[spot.item].item->key);
      if (IsOnLineOf(text, key.begin, offset)) {
        FillItem(index, text, offset, spot);
        return spot;
      }
      spot.item = kNone;
    }
  }
  spot.kind = Spot::Kind::kKey;
  spot.text = {offset, offset};
  return spot;
}

NamesAt FindNames(const Index& index, Id file, std::uint32_t offset) {
  NamesAt names;
  const Id section = SectionBefore(index, file, offset);
  if (section == kNone) return names;
  const Id item = ItemBefore(index, section, offset);
  if (item == kNone) return names;
  for (const Definition& each : index.DefinitionsIn(item)) {
    if (!Has(each.name, offset)) continue;
    names.definitions.push_back(static_cast<Id>(&each - index.definitions().data()));
  }
  for (const Reference& each : index.ReferencesIn(item)) {
    if (!Has(each.name, offset)) continue;
    names.references.push_back(static_cast<Id>(&each - index.references().data()));
  }
  return names;
}

}  // namespace rux::index
