// A script and what fixing makes of it.
#ifndef DRIVER_FIXED_SCRIPT_H_
#define DRIVER_FIXED_SCRIPT_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace rux::driver {

// A fix that is made or could be made, at its place in the text that it is made in.
struct FixMade {
  std::string id;  // of the message
  std::uint32_t line;
  std::size_t column;  // from 1, in characters
  std::string text;    // "replace hto with hot"
};

struct FixedScript {
  std::string path;  // as it can be opened
  std::string text;  // as it is in the file
  std::string fixed;
  std::vector<FixMade> fixes;
  std::size_t offered = 0;  // fixes that are left because they are not safe
  std::string refusal;      // why it stays as it is; empty: it does not

  bool is_changed() const { return refusal.empty() && fixed != text; }
  void SortFixes() {
    std::stable_sort(fixes.begin(), fixes.end(),
                     [](const FixMade& a, const FixMade& b) { return a.line < b.line; });
  }
  void Refuse(std::string why) {
    refusal = std::move(why);
    fixed = text;
  }
};

}  // namespace rux::driver

#endif  // DRIVER_FIXED_SCRIPT_H_
