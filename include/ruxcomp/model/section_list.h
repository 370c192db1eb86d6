// Where the sections of the read model are; see model.h.
#ifndef RUXCOMP_MODEL_SECTION_LIST_H_
#define RUXCOMP_MODEL_SECTION_LIST_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"

namespace ruxcomp::detail {

// One kind after the other, the kinds in the order of their numbers.
class SectionList {
 public:
  static constexpr std::size_t kKinds = language::kSectionKindCount;

  using Places = language::Rows<std::uint32_t>;

  void Reserve(std::size_t count) { places_.reserve(count); }

  // `place` grows from section to section. Foreign kinds are left out.
  void Add(std::uint32_t kind, std::uint32_t place) {
    if (kind != last_kind_) BeginRun(kind);
    if (is_own_) places_.push_back(place);
  }

  // Once all are in.
  void Settle() {
    std::vector<std::uint32_t> sorted;
    sorted.reserve(places_.size());
    runs_.push_back({kKinds, places_.size()});
    for (std::size_t i = 0; i < kKinds; ++i) {
      for (std::size_t run = 0; run + 1 < runs_.size(); ++run) {
        if (runs_[run].kind != i) continue;
        sorted.insert(sorted.end(), places_.data() + runs_[run].begin,
                      places_.data() + runs_[run + 1].begin);
      }
      kind_begin_[i + 1] = sorted.size();
    }
    places_ = std::move(sorted);
    runs_ = {};
  }

  Places all() const noexcept { return {places_.data(), places_.size()}; }
  Places OfKind(std::uint32_t kind) const noexcept {
    const std::size_t i = kind - RUX_SECT_MORVRUX;
    if (i >= kKinds) return {};
    return {places_.data() + kind_begin_[i], kind_begin_[i + 1] - kind_begin_[i]};
  }
  const std::array<std::size_t, kKinds + 1>& kind_begins() const noexcept { return kind_begin_; }

  // Among the sections of its kind.
  std::uint32_t OrdinalOf(std::uint32_t kind, std::uint32_t place) const noexcept {
    const Places own = OfKind(kind);
    return static_cast<std::uint32_t>(std::lower_bound(own.begin(), own.end(), place) -
                                      own.begin());
  }

 private:
  // Neighbours of one kind.
  struct Run {
    std::size_t kind;
    std::size_t begin;  // among the places
  };

  void BeginRun(std::uint32_t kind) {
    last_kind_ = kind;
    is_own_ = kind - RUX_SECT_MORVRUX < kKinds;
    if (is_own_) runs_.push_back({kind - RUX_SECT_MORVRUX, places_.size()});
  }

  std::vector<std::uint32_t> places_;
  std::array<std::size_t, kKinds + 1> kind_begin_{};  // where each begins; the end of the last
  // Until all are in: as they came.
  std::vector<Run> runs_;
  std::uint32_t last_kind_ = 0;
  bool is_own_ = false;
};

}  // namespace ruxcomp::detail

#endif  // RUXCOMP_MODEL_SECTION_LIST_H_
