#include "compiled/debug_meta.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiled/compiled_file.h"
#include "compiled/file.h"
#include "compiled/verify.h"
#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/debug_meta_records.h"
#include "ruxcomp/file/debug_meta_walk.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/file/views.h"
#include "ruxcomp/language/words.h"

namespace rux::compiled {
namespace {

class DebugMetaBuilder : public DebugMetaVisitor {
 public:
  explicit DebugMetaBuilder(DebugMeta& meta) : meta_(meta) {}

  void OnWordCount(Extent extent) { meta_.word_count = extent; }
  void OnWord(Cursor&, DebugWordView& view) {
    meta_.words.push_back(
        {std::string(view.name), view.value, view.extent, std::move(view.pieces)});
  }

  void OnKindCount(Extent extent) { meta_.kind_count = extent; }
  void OnKindBegin(Cursor&, Extent section_count) {
    meta_.section_counts.push_back(section_count);
    meta_.kinds.emplace_back();
  }

  void OnFiles(const Texts& files, Extent extent) {
    meta_.files = ListOf(files);
    meta_.files_extent = extent;
  }

  void OnSectionBegin(Cursor&, const DebugSectionView&) { meta_.kinds.back().emplace_back(); }

  void OnEntry(Cursor&, DebugEntryView& view) {
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

  void OnSectionEnd(Cursor&, DebugSectionView& view) {
    TakeObject(view, meta_.kinds.back().back());
  }

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

// Where the list of source files is, and the lengths of the records that it is in.
struct FilesPlace : DebugMetaVisitor {
  void OnFiles(const Texts&, Extent extent) { first_length = extent.offset + kWordSize; }
  void OnSectionBegin(Cursor&, const DebugSectionView& section) {
    if (first_length == 0 || object_length != 0) return;
    object_length = section.object_length_offset();
    record_length = section.record_length_offset();
  }

  std::size_t first_length = 0;  // of the first path; 0: there is no list
  std::size_t object_length = 0;
  std::size_t record_length = 0;
};

}  // namespace

bool IsDebugMetaBytes(std::string_view bytes) { return FormOf(bytes) == Form::kDebugMeta; }

DebugMeta DecodeDebugMeta(std::string_view bytes, Faults& faults, Keep keep) {
  DebugMeta meta;
  DebugMetaBuilder builder(meta);
  FileHeader header = WalkDebugMeta(bytes, faults, builder, keep == Keep::kPieces);
  if (!faults.empty()) return {};
  meta.version = header.version;
  meta.creation_time = header.creation_time;
  meta.header = std::move(header.pieces);
  return meta;
}

DebugMeta SoundDebugMeta(const std::string& path, std::string_view bytes) {
  Faults faults = Verify(bytes);
  if (!faults.empty()) throw Unsound(path, bytes);
  return DecodeDebugMeta(bytes, faults);
}

DebugMeta ReadDebugMeta(const std::string& path) {
  const CompiledFile file(path, Form::kDebugMeta);
  Faults none;
  return DecodeDebugMeta(file.bytes(), none);
}

void RenameScript(std::string& bytes, std::string_view path) {
  FilesPlace place;
  Faults none;
  WalkDebugMeta(bytes, none, place);
  if (place.first_length == 0) return;
  const std::uint32_t length = LoadWord(&bytes[place.first_length]);
  const auto growth = static_cast<std::uint32_t>(path.size()) - length;
  for (const std::size_t at : {place.record_length, place.object_length, place.first_length}) {
    language::StoreWord(bytes, at, LoadWord(&bytes[at]) + growth);
  }
  bytes.replace(place.first_length + kWordSize, length, path);
}

}  // namespace rux::compiled
