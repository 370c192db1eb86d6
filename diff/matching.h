// Which sections of two machines are the same one.
#ifndef DIFF_MATCHING_H_
#define DIFF_MATCHING_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "diff/kind_matcher.h"
#include "machine/value.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"

namespace rux::diff {

// Of all kinds.
class Matching {
 public:
  // Both must outlive this.
  Matching(const ruxcomp::Model& before, const ruxcomp::Model& after);

  const KindMatch& Of(const ruxcomp::language::SectionKind& kind) const;

  // Whether two values are the same, names of sections being the same when the sections match.
  bool AreSame(const ruxcomp::Value& before, const ruxcomp::Value& after) const;
  // The same for IDs of sections of the kind; null: they are plain values.
  bool AreSameIds(const ruxcomp::language::SectionKind* kind, const ruxcomp::Value& before,
                  const ruxcomp::Value& after) const;
  bool AreSameValues(const ruxcomp::language::SectionKind* kind, const ruxcomp::Values& before,
                     const ruxcomp::Values& after) const;
  // The same for parts of values that are resolved.
  bool AreSameParts(const machine::EntryPart& before, const machine::EntryPart& after) const;
  // What the other machine has for an ID: another one when the section has another.
  std::uint32_t NewId(const ruxcomp::language::SectionKind& kind, std::uint32_t before) const;
  std::uint32_t OldId(const ruxcomp::language::SectionKind& kind, std::uint32_t after) const;
  // Whether any section has another ID.
  bool has_new_ids() const { return has_new_ids_; }

 private:
  bool AreSameTexts(std::uint32_t index_class, std::string_view before,
                    std::string_view after) const;
  KindMatch& MatchOf(const ruxcomp::language::SectionKind& kind);
  void NoteNames(const ruxcomp::language::SectionKind& kind);

  const ruxcomp::Model& before_;
  const ruxcomp::Model& after_;
  std::array<KindMatch, ruxcomp::language::kSectionKindCount> kinds_;
  bool has_new_ids_ = false;
};

// The number that a value is; none when it is not one. A -1 is 0xFFFFFFFF.
std::optional<std::uint32_t> NumberOf(const ruxcomp::Value& value);

}  // namespace rux::diff

#endif  // DIFF_MATCHING_H_
