// The values of one section that its other values mention.
#ifndef RUXCOMP_VERIFY_LOCAL_VALUES_H_
#define RUXCOMP_VERIFY_LOCAL_VALUES_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "ruxcomp/file/cursor.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/verify/meta_references.h"
#include "ruxcomp/verify/meta_tables.h"

namespace ruxcomp::verify {

// All indices must be in their tables. Adding, mentioning and checking a value each take constant
// time, however many the section has.
class LocalValues {
 public:
  // The tables must be complete when the first section begins.
  explicit LocalValues(const MetaTables& tables) : tables_(tables) {}

  void BeginSection(std::uint32_t ordinal) {
    section_ = ordinal + 1;
    mentions_.clear();
  }

  // The section has an entry of that identifier. Only names of values can be mentioned.
  void Add(std::uint32_t identifier) {
    if (language::ClassOf(identifier) != language::CLASS_Value) return;
    if (last_section_.empty()) last_section_.resize(tables_.CountOf(language::CLASS_Value));
    last_section_[language::OrdinalOf(identifier)] = section_;
  }

  void Mention(std::uint32_t identifier, WordPlace place) {
    mentions_.push_back({language::OrdinalOf(identifier), place});
  }

  // Where a section mentions a value, it has it.
  void EndSection(file::Cursor& cursor) const {
    for (const auto& [ordinal, place] : mentions_) {
      if (ordinal < last_section_.size() && last_section_[ordinal] == section_) continue;
      const file::Record record(cursor, "entry", place.entry);
      cursor.Report("value", place.offset, "it is value {}, which the section does not have",
                    ordinal);
    }
  }

 private:
  struct ValueMention {
    std::uint32_t ordinal;
    WordPlace place;
  };

  const MetaTables& tables_;
  std::uint32_t section_ = 0;                // from 1
  std::vector<std::uint32_t> last_section_;  // by ordinal of the value: the last that has it
  std::vector<ValueMention> mentions_;
};

}  // namespace ruxcomp::verify

#endif  // RUXCOMP_VERIFY_LOCAL_VALUES_H_
