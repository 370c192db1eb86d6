// Any text, checked and fixed as rux fix does it: fixes stay within the text and within its lines,
// and a script without errors has none afterwards.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/severities.h"
#include "driver/compile_options.h"
#include "driver/compile_run.h"
#include "fixing/edits.h"
#include "fuzz/target.h"
#include "reader/texts.h"

namespace {

using fuzz::Expect;
using rux::diagnostics::Fix;

// What it includes is not there.
constexpr char kScript[] = "fuzz/main.rux";

struct Found {
  std::size_t errors;
  std::vector<Fix> fixes;  // that are safe and can be made at once
};

Found Check(const std::string& text) {
  ruxcomp::reader::Texts::Clear();
  ruxcomp::reader::Texts::Put(kScript, text);
  rux::driver::CompileOptions options;
  options.scripts = {kScript};
  options.project_choice.has_none = true;
  options.purpose = rux::diagnostics::Purpose::kFix;
  const rux::driver::Checked checked = rux::driver::Check(options);
  Found found{checked.found.report.errors, {}};
  for (const rux::diagnostics::Diagnostic& diagnostic : checked.found.report.diagnostics) {
    const std::optional<Fix> fix = rux::diagnostics::FixOf(diagnostic);
    if (!fix) continue;
    Expect(fix->range.begin <= fix->range.end && fix->range.end <= text.size(),
           "a fix is within the text");
    const bool collides = std::any_of(found.fixes.begin(), found.fixes.end(), [&](const Fix& each) {
      return rux::fixing::Collide(each, *fix);
    });
    if (fix->is_safe && !collides) found.fixes.push_back(*fix);
  }
  return found;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  const Found before = Check(text);
  const std::string fixed = rux::fixing::Fixed(text, before.fixes);
  // A line end may be missing at the end.
  const std::string whole = !text.empty() && text.back() != '\n' ? text + '\n' : text;
  const auto lines = [](const std::string& of) { return std::count(of.begin(), of.end(), '\n'); };
  Expect(lines(fixed) == lines(text) || lines(fixed) == lines(whole), "lines stay where they are");
  if (before.errors > 0) return 0;
  Expect(Check(fixed).errors == 0, "a fix brings no error");
  return 0;
}
