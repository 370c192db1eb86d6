// The source lines of exact places.
#ifndef DIAGNOSTICS_EXCERPTS_H_
#define DIAGNOSTICS_EXCERPTS_H_

#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "support/utf8.h"

namespace rux::diagnostics {

// A line may be long and be the place of many diagnostics: its characters are counted once.
class Excerpts {
 public:
  // Fills in the excerpts of the diagnostics and their notes, where places are exact.
  void AddTo(std::vector<Diagnostic>& diagnostics);

 private:
  void AddTo(Location& location);
  const support::CharacterCounts& CountsOf(const Location& location, const Excerpt& excerpt);

  using Line = std::pair<const support::TextFile*, std::uint32_t>;
  Line last_ = {nullptr, 0};
  std::unique_ptr<support::CharacterCounts> last_counts_;
  std::map<Line, support::CharacterCounts> long_lines_;
};

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_EXCERPTS_H_
