#include "assistance/hints.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "assistance/call.h"
#include "assistance/place.h"
#include "assistance/targets.h"
#include "assistance/wording.h"
#include "index/index.h"
#include "index/part_use.h"
#include "index/records.h"
#include "index/spot.h"
#include "rules/wording.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"
#include "sources/source_file.h"

namespace rux::assistance {
namespace {

using index::Index;

// The items of one file.
class HintReader {
 public:
  HintReader(const Index& index, Id file) : index_(index), file_(*index.files()[file]) {}

  void Read(Id item) {
    AddReferences(item);
    AddParts(item);
  }

  std::vector<Hint> Take() { return std::move(hints_); }

 private:
  void AddReferences(Id item) {
    for (const index::Reference& each : index_.ReferencesIn(item)) {
      if (each.symbol == kNone || each.definition == kNone) continue;
      const index::Symbol& symbol = index_.symbols()[each.symbol];
      const index::Definition& definition = index_.definitions()[each.definition];
      if (!IsName(symbol)) continue;
      if (each.space == index::kWords) {
        AddValue(item, each, definition.value);
      } else if (each.space.entry == language::ENTRY_ID) {
        AddName(each, NameOf(index_, definition.section));
      }
    }
  }

  // Types of values are words, too, whose numbers mean nothing to people.
  void AddValue(Id item, const index::Reference& reference, std::uint32_t value) {
    const index::ItemRecord& record = index_.items()[item];
    const index::SectionRecord& section = index_.sections()[record.section];
    const index::PartUse use =
        index::UseOfPart(section.kind->source, record.entry, nullptr, reference.part);
    if (use.use != index::Use::kNumber || use.reference != nullptr) return;
    hints_.push_back({reference.name.end, fmt::format("= {}", value), false});
  }

  void AddName(const index::Reference& reference, std::string_view name) {
    if (!name.empty()) hints_.push_back({reference.name.end, std::string(name), false});
  }

  // Of the parts that are numbers: a name explains itself.
  void AddParts(Id item) {
    const index::ItemRecord& record = index_.items()[item];
    const std::vector<std::string_view> parts = index::PartsOf(index_, item);
    const auto* type = index_.RecordOf(record.entry, parts.data(), parts.size());
    if (type == nullptr) return;
    const std::size_t first = language::PayloadOf(record.entry) == language::PAYLOAD_VALUE ? 1 : 0;
    const bool is_call = ArgumentsOfCall(index_, *type, parts, first).has_value();
    for (std::size_t i = first; i < parts.size(); ++i) {
      if (!language::ReadNumber(parts[i]).is_number) continue;
      const std::string text = NameOfPart(*type, i - first, is_call);
      if (!text.empty()) hints_.push_back({file_.RangeOf(parts[i]).begin, text + ":", true});
    }
  }

  static std::string NameOfPart(const language::ValueType& type, std::size_t part, bool is_call) {
    const std::size_t texts = type.TextCount();
    if (part < texts) return rules::InWords(type.fields[part].name);
    return is_call ? ArgumentText(static_cast<std::uint32_t>(part - texts + 1)) : "";
  }

  const Index& index_;
  const sources::SourceFile& file_;
  std::vector<Hint> hints_;
};

}  // namespace

std::vector<Hint> HintsIn(const Index& index, Id file, ByteRange range) {
  HintReader reader(index, file);
  for (const Id section : index.SectionsOf(file)) {
    if (index.sections()[section].kind == nullptr) continue;
    const ByteRange all = index.RangeOfSection(section);
    if (all.end < range.begin || all.begin > range.end) continue;
    for (const index::ItemRecord& item : index.ItemsOf(section)) {
      const auto id = static_cast<Id>(&item - index.items().data());
      const ByteRange own = index.RangeOfItem(id);
      if (own.end >= range.begin && own.begin <= range.end) reader.Read(id);
    }
  }
  return reader.Take();
}

}  // namespace rux::assistance
