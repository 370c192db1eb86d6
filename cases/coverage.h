// How much of a machine tests evaluate.
#ifndef CASES_COVERAGE_H_
#define CASES_COVERAGE_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "evaluation/bands.h"
#include "evaluation/observer.h"
#include "evaluation/result.h"
#include "evaluation/target.h"
#include "machine/machine.h"
#include "machine/place.h"
#include "profile/profile.h"
#include "ruxcomp/model/handles.h"

namespace rux::cases {

// Notes what is evaluated to something: what is unknown is not.
class Coverage : public evaluation::Observer {
 public:
  void End(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
           const evaluation::Result& result) override;
  void Call(const ruxcomp::Section& action, const std::vector<evaluation::Result>&) override;
  void Return(const evaluation::Result& result) override;
  void Cell(const ruxcomp::Section& table, std::uint32_t index) override;
  void Branch(const ruxcomp::Section& section, const ruxcomp::Entry& entry, bool holds) override;

  // A sensor is expected in a band: it is on one side of each of its limits.
  void AddBand(const profile::Profile& profile, const ruxcomp::Section& sensor,
               const evaluation::Band& band);
  // What was noted: values, limits, and cells by Change::CellKey().
  std::vector<evaluation::ValueKey> Keys() const;
  // Adds what another one noted.
  void Add(const Coverage& other);

 private:
  friend class CoverageReader;
  // The ways something went: bit 0 one way, bit 1 the other.
  using Ways = std::map<evaluation::ValueKey, unsigned>;

  struct OpenCall {
    std::uint32_t action;  // its ordinal
    bool is_known = true;  // so far, what was evaluated in it
  };
  std::vector<OpenCall> calls_;

  // Whether something known came of it, once at least.
  std::map<evaluation::ValueKey, bool> steps_;
  std::map<std::uint32_t, bool> actions_;                    // by ordinals
  std::set<std::pair<std::uint32_t, std::uint32_t>> cells_;  // ordinals of tables, indices
  Ways branches_;
  Ways limits_;
};

// Something that tests may evaluate.
struct CoveredThing {
  evaluation::ValueKey key;  // without an identifier where it is all of a section
  std::string path;          // "SENSOR/CPU0_TEMP/THRESHOLD_FH"
  std::string what;          // "never beyond it"
  std::optional<machine::Place> place;

  std::string Text() const { return path + ": " + what; }
};

struct CoveredKind {
  std::string_view name;  // "limits"
  std::string_view what;  // that counts: "limits with readings on both sides"
  std::vector<evaluation::ValueKey> things = {};  // all of them
  std::vector<CoveredThing> missing = {};
  std::vector<CoveredThing> left_out = {};  // none of them: limits that are not compared

  std::size_t all() const { return things.size(); }
  std::size_t covered() const { return all() - missing.size(); }
  // Rounded down; none when there is nothing to cover.
  std::optional<std::size_t> percent() const {
    if (all() == 0) return std::nullopt;
    return covered() * 100 / all();
  }
  // "313 of 313, 1 not compared under this profile"
  std::string CountText() const;
};

inline constexpr std::string_view kCoveredKinds[] = {"limits", "actions", "steps", "cells",
                                                     "branches"};

// In the order of these. Limits are those that the profile has compared, or does not say so of;
// cells are the first and the last of each stretch of equal ones; a branch is a comparison or a
// condition, for each of its two ways.
std::vector<CoveredKind> CoverageOf(const machine::Machine& machine,
                                    const profile::Profile& profile, const Coverage& coverage);

}  // namespace rux::cases

#endif  // CASES_COVERAGE_H_
