// What a debug meta file must say, beyond its layout.
#ifndef COMPILED_DEBUG_RULES_H_
#define COMPILED_DEBUG_RULES_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "compiled/file.h"
#include "ruxcomp/file/debug_meta_records.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/verify/text_set.h"

namespace rux::compiled {

// Reports what no compiler writes for a script that passed its checks: sections and entries that
// cannot be where they are or have such a name, values that are not those of their types, words
// and definitions without each other. The texts of values refer to other sections as the script
// wrote them; whether they are right is for the check of the script to say, and not looked at here.
class DebugRules : public DebugMetaVisitor {
 public:
  void OnWord(Cursor& cursor, DebugWordView& word);
  void OnKindBegin(Cursor& cursor, Extent section_count);
  void OnFiles(const Texts& files, Extent extent);
  void OnSectionBegin(Cursor& cursor, const DebugSectionView& section);
  void OnEntry(Cursor& cursor, DebugEntryView& entry);
  void OnEnd(Cursor& cursor);

  // What there is in the file.
  std::size_t words() const { return words_.size(); }
  // None when the file does not list them.
  std::optional<std::size_t> files() const { return files_; }
  std::size_t sections() const { return sections_; }
  // Those that the script gave.
  std::size_t entries() const { return entries_; }
  // The list of source files goes with the first section. When that is an INCLUDE section, the
  // library drops both, and cannot read any other section without the list.
  bool hides_files() const { return begins_with_include_ && has_other_kinds_; }

 private:
  struct Word {
    std::string_view name;
    std::uint32_t value;
    std::size_t offset;
    bool is_defined = false;
  };

  std::optional<language::Notation> NotationOf(Cursor& cursor, const DebugEntryView& entry);
  void CheckNotGiven(Cursor& cursor, const DebugEntryView& entry, bool may_lack);
  void CheckGiven(Cursor& cursor, const DebugEntryView& entry, bool is_free);
  void CheckName(Cursor& cursor, const DebugEntryView& entry, bool is_free);
  void CheckDefinition(Cursor& cursor, const DebugEntryView& entry);
  void CheckValue(Cursor& cursor, const DebugEntryView& entry);
  void CheckCalculation(Cursor& cursor, const DebugEntryView& entry);
  Word* FindWord(std::string_view name);

  std::vector<Word> words_;  // in the order of their names
  std::optional<std::size_t> files_;
  std::size_t sections_ = 0;
  std::size_t entries_ = 0;
  bool begins_with_include_ = false;
  bool has_other_kinds_ = false;

  // Of the block that one is in.
  ruxcomp::verify::TextSet section_names_;
  ruxcomp::verify::TextSet entry_names_;  // of one section, or of all
  // The section that one is in.
  const language::SectionKind* kind_ = nullptr;
};

}  // namespace rux::compiled

#endif  // COMPILED_DEBUG_RULES_H_
