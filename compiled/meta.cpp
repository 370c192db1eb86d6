#include "compiled/meta.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "compiled/file.h"
#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/file/meta_walk.h"
#include "ruxcomp/file/views.h"

namespace rux::compiled {
namespace {

class MetaBuilder : public MetaVisitor {
 public:
  explicit MetaBuilder(CompiledMeta& meta) : meta_(meta) {}

  void OnTable(Cursor&, MetaTableView view) {
    CompiledTable& table = meta_.tables.emplace_back();
    table.base = view.base;
    table.length = view.length;
    table.extent = view.extent;
    table.note = std::move(view.note);
    table.pieces = std::move(view.pieces);
    for (std::size_t i = 0; i < view.ends.size(); ++i) table.texts.emplace_back(view.TextAt(i));
    table.numbers = ListOf(view.numbers);
    table.cells.resize(view.cells.size() / sizeof(TableCells));
    for (TableCells& cells : table.cells) {
      std::copy_n(view.cells.begin(), cells.size(), cells.begin());
      view.cells.remove_prefix(cells.size());
    }
  }

  void OnSectionBegin(Cursor&, const MetaSectionView& view) {
    meta_.sections.emplace_back().identifier = view.identifier;
  }

  void OnEntry(Cursor&, MetaEntryView& view) {
    CompiledEntry& entry = meta_.sections.back().entries.emplace_back();
    entry.identifier = view.identifier();
    entry.values = ListOf(view.values());
    entry.extent = {view.offset, view.value_offset(view.value_count()) - view.offset};
    entry.pieces = std::move(view.pieces);
  }

  void OnSectionEnd(Cursor& cursor, MetaSectionView& view) {
    CompiledSection& section = meta_.sections.back();
    section.extent = {view.offset, cursor.offset() - view.offset};
    section.pieces = std::move(view.pieces);
  }

 private:
  static std::vector<std::uint32_t> ListOf(const Words& words) {
    std::vector<std::uint32_t> list;
    list.reserve(words.size());
    for (std::size_t i = 0; i < words.size(); ++i) list.push_back(words[i]);
    return list;
  }

  CompiledMeta& meta_;
};

}  // namespace

bool IsMetaBytes(std::string_view bytes) { return FormOf(bytes) == Form::kMeta; }

CompiledMeta DecodeMeta(std::string_view bytes, Faults& faults, Keep keep) {
  CompiledMeta meta;
  MetaBuilder builder(meta);
  MetaFrame frame = WalkMeta(bytes, faults, builder, keep == Keep::kPieces);
  if (!faults.empty()) return {};
  meta.version = frame.header.version;
  meta.creation_time = frame.header.creation_time;
  meta.header = std::move(frame.header.pieces);
  meta.directory = std::move(frame.directory);
  meta.frame = std::move(frame.sections);
  return meta;
}

}  // namespace rux::compiled
