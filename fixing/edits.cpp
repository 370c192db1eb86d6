#include "fixing/edits.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostic.h"

namespace rux::fixing {

using diagnostics::Fix;

bool Collide(const Fix& one, const Fix& other) {
  return one.range.begin <= other.range.end && other.range.begin <= one.range.end;
}

std::string Fixed(std::string_view text, std::vector<Fix> fixes) {
  std::sort(fixes.begin(), fixes.end(),
            [](const Fix& a, const Fix& b) { return a.range.begin < b.range.begin; });
  std::string fixed;
  std::size_t done = 0;
  for (const Fix& fix : fixes) {
    fixed.append(text.substr(done, fix.range.begin - done)).append(fix.text);
    done = fix.range.end;
  }
  return fixed.append(text.substr(done));
}

}  // namespace rux::fixing
