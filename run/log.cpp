#include "run/log.h"

#include <algorithm>
#include <functional>
#include <tuple>

#include "findings/message_row.h"
#include "findings/origin.h"

namespace rux::run {

using ruxcomp::findings::Origin;

void Log::Begin(Phase phase) {
  phase_ = phase;
  if (phase == Phase::kCheck) {
    std::sort(read_.begin(), read_.end(), IsBefore);
  } else {
    read_ = {};
  }
}

bool Log::Wants(const ruxcomp::findings::MessageRow& row, const Origin& origin, bool may_go) {
  if (std::find(left_out_.begin(), left_out_.end(), &row) != left_out_.end()) return false;
  return !IsRepeated(row, origin) && (may_go || tally_.Add(row));
}

bool Log::IsBefore(const Known& a, const Known& b) {
  if (a.origin == b.origin) return std::less<>()(a.row, b.row);
  const auto key_of = [](const Origin& at) {
    return std::tuple(at.script, at.section, at.item, at.part);
  };
  return key_of(a.origin) < key_of(b.origin);
}

// Some items are checked while they are read, and again with the whole model.
bool Log::IsRepeated(const ruxcomp::findings::MessageRow& row, const Origin& origin) {
  if (origin.section == Origin::kNone) return false;
  const Known known{origin, &row};
  if (phase_ == Phase::kParse) read_.push_back(known);
  return phase_ == Phase::kCheck && std::binary_search(read_.begin(), read_.end(), known, IsBefore);
}

}  // namespace rux::run
