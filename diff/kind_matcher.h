// Which sections of one kind are the same in two machines.
#ifndef DIFF_KIND_MATCHER_H_
#define DIFF_KIND_MATCHER_H_

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"

namespace rux::diff {

// The ordinals of what is the same.
struct Pair {
  std::uint32_t before;
  std::uint32_t after;
};

// The sections of one kind.
struct KindMatch {
  std::vector<Pair> pairs;             // in the order of the new machine
  std::vector<std::uint32_t> removed;  // in their order
  std::vector<std::uint32_t> added;
  // Of pairs that have another NAME or ID, what the new one is.
  std::unordered_map<std::string_view, std::string_view> new_names;
  std::unordered_map<std::uint32_t, std::uint32_t> new_ids;
  // The names and IDs that sections of the new machine have from others.
  std::unordered_map<std::string_view, std::string_view> old_names;
  std::unordered_map<std::uint32_t, std::uint32_t> old_ids;
};

// Sections match when ID and NAME are the same; then by ID, when neither knows the other's NAME;
// then by NAME. Of a kind without IDs, those that are left match when all but the NAME is the same,
// and of no other. Those of unnamed kinds match in their order.
KindMatch MatchKind(const ruxcomp::language::SectionKind& kind, const ruxcomp::Model& before,
                    const ruxcomp::Model& after);

}  // namespace rux::diff

#endif  // DIFF_KIND_MATCHER_H_
