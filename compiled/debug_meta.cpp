#include "compiled/debug_meta.h"

#include <utility>

#include "compiled/compiled_file.h"
#include "compiled/debug_walk.h"

namespace rux::compiled {
namespace {

class Builder : public DebugVisitor {
 public:
  explicit Builder(DebugMeta& meta) : meta_(meta) {}

  void OnWordCount(Extent extent) override { meta_.word_count = extent; }
  void OnWord(Cursor&, DebugWordView& view) override {
    meta_.words.push_back(
        {std::string(view.name), view.value, view.extent, std::move(view.pieces)});
  }

  void OnKindCount(Extent extent) override { meta_.kind_count = extent; }
  void OnKindBegin(Cursor&, std::size_t, Extent section_count) override {
    meta_.section_counts.push_back(section_count);
    meta_.kinds.emplace_back();
  }

  void OnFiles(Cursor&, const Texts& files, Extent extent) override {
    meta_.files = ListOf(files);
    meta_.files_extent = extent;
  }

  void OnSectionBegin(Cursor&, const DebugSectionView&) override {
    meta_.kinds.back().emplace_back();
  }

  void OnEntry(Cursor&, DebugEntryView& view) override {
    DebugEntry& entry = meta_.kinds.back().back().entries.emplace_back();
    TakeObject(view, entry);
    entry.payload_type = view.payload_type;
    entry.number = view.number;
    entry.value_type = view.value_type;
    entry.payload_extent = view.payload_extent;
    for (std::size_t i = 0; i < view.field_count; ++i) {
      const DebugFieldView& field = view.fields[i];
      entry.fields.push_back({field.is_list, ListOf(field.texts), field.extent, field.name});
    }
  }

  void OnSectionEnd(Cursor&, DebugSectionView& view) override {
    TakeObject(view, meta_.kinds.back().back());
  }

  void OnEnd(Cursor&) override {}

 private:
  static std::vector<std::string> ListOf(const Texts& texts) {
    std::vector<std::string> list;
    texts.ForEach([&](std::string_view text) { list.emplace_back(text); });
    return list;
  }

  static void TakeObject(DebugObjectView& view, DebugObject& object) {
    object.identifier = view.identifier;
    object.notation = view.notation;
    object.line = view.line;
    object.file_index = view.file_index;
    object.name = view.name;
    object.extent = view.extent;
    object.pieces = std::move(view.pieces);
  }

  DebugMeta& meta_;
};

}  // namespace

bool IsDebugMetaBytes(std::string_view bytes) { return FormOf(bytes) == Form::kDebugMeta; }

DebugMeta DecodeDebugMeta(std::string_view bytes, Faults& faults, Keep keep) {
  DebugMeta meta;
  Builder builder(meta);
  FileHeader header = WalkDebugMeta(bytes, faults, builder, keep == Keep::kPieces);
  if (!faults.empty()) return {};
  meta.version = header.version;
  meta.creation_time = header.creation_time;
  meta.header = std::move(header.pieces);
  return meta;
}

DebugMeta ReadDebugMeta(const std::string& path) {
  const CompiledFile file(path, Form::kDebugMeta);
  Faults none;
  return DecodeDebugMeta(file.bytes(), none);
}

}  // namespace rux::compiled
