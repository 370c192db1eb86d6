// A debug meta file for reading: what the script said, in the form of a meta file.
#ifndef INSPECT_DEBUG_VIEW_H_
#define INSPECT_DEBUG_VIEW_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/debug_meta.h"
#include "compiled/file.h"
#include "compiled/meta.h"
#include "inspect/debug_text.h"
#include "inspect/entry_value.h"
#include "inspect/file_view.h"
#include "inspect/path.h"
#include "inspect/section_names.h"
#include "ruxcomp/language/sections.h"

namespace rux::inspect {

class DebugView : public FileView {
 public:
  // Throws a Failure when the bytes are not those of a sound debug meta file. They need not outlive
  // the constructor.
  DebugView(const std::string& path, std::string_view bytes);

  compiled::Form form() const override { return compiled::Form::kDebugMeta; }
  std::uint32_t version() const override { return meta_.version; }
  std::uint32_t creation_time() const override { return meta_.creation_time; }

  const SectionKind& ExpectKind(const std::string& keyword) const override;
  std::size_t CountOf(const SectionKind& kind) const override { return SectionsOf(kind).size(); }
  SectionLabel LabelOf(const SectionKind& kind, std::size_t ordinal) const override;
  std::vector<std::string> KeysOf(const SectionKind& kind, std::size_t ordinal) const override;
  std::vector<KeyedValue> EntriesOf(const SectionKind& kind, std::size_t ordinal) const override;
  std::optional<EntryValue> EntryOf(const SectionKind& kind, std::size_t ordinal,
                                    const std::string& key) const override;
  std::string SourceFileOf(const SectionKind& kind, std::size_t ordinal) const override;
  const compiled::TableCells* CellsOf(const SectionKind&, std::size_t) const override {
    return nullptr;  // the rows are entries
  }
  // Also WORD/NAME, the first entry that defines the word.
  Found Find(const std::vector<PathStep>& path) const override;

 private:
  using Section = compiled::DebugSection;

  const std::vector<const Section*>& SectionsOf(const SectionKind& kind) const;
  EntryValue NamedValueOf(const Section& section, const compiled::DebugEntry& entry) const;

  compiled::DebugMeta meta_;
  SourcePlaces places_;
  std::array<std::vector<const Section*>, ruxcomp::language::kSectionKindCount> sections_;
  SectionNames names_;
};

}  // namespace rux::inspect

#endif  // INSPECT_DEBUG_VIEW_H_
