// A meta file for reading: the read model, in the words of a script's author.
#ifndef INSPECT_META_VIEW_H_
#define INSPECT_META_VIEW_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "compiled/datum.h"
#include "compiled/file.h"
#include "compiled/meta.h"
#include "inspect/entry_value.h"
#include "inspect/file_view.h"
#include "inspect/path.h"
#include "ruxcomp/file/kept_bytes.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"

namespace rux::inspect {

// The kind of that keyword, in any case. Throws a Failure that names the kinds near it.
const SectionKind& KindInMeta(const std::string& keyword);

// What a path leads to in a model (FileView::Find).
Found FindIn(const ruxcomp::Model& model, const std::vector<PathStep>& path,
             Lister lister = LsCommand);

class MetaView : public FileView {
 public:
  // Throws a Failure when the bytes of the file are not those of a sound meta file.
  MetaView(const std::string& path, std::unique_ptr<ruxcomp::file::KeptBytes> bytes);

  compiled::Form form() const override { return compiled::Form::kMeta; }
  std::uint32_t version() const override { return model_.info().version; }
  std::uint32_t creation_time() const override { return model_.info().creationTime; }

  const SectionKind& ExpectKind(const std::string& keyword) const override {
    return KindInMeta(keyword);
  }
  std::size_t CountOf(const SectionKind& kind) const override;
  SectionLabel LabelOf(const SectionKind& kind, std::size_t ordinal) const override;
  std::vector<std::string> KeysOf(const SectionKind& kind, std::size_t ordinal) const override;
  std::vector<KeyedValue> EntriesOf(const SectionKind& kind, std::size_t ordinal) const override;
  std::optional<EntryValue> EntryOf(const SectionKind& kind, std::size_t ordinal,
                                    const std::string& key) const override;
  std::string SourceFileOf(const SectionKind&, std::size_t) const override { return ""; }
  const compiled::TableCells* CellsOf(const SectionKind& kind, std::size_t ordinal) const override;
  Found Find(const std::vector<PathStep>& path) const override { return FindIn(model_, path); }

 private:
  ruxcomp::Sections SectionsOf(const SectionKind& kind) const {
    return model_.sections(kind.compiled);
  }

  std::unique_ptr<ruxcomp::file::KeptBytes> bytes_;
  ruxcomp::Model model_;  // of these bytes
};

}  // namespace rux::inspect

#endif  // INSPECT_META_VIEW_H_
