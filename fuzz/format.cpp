// Any text through the formatter: what is formatted means the same and does not change again.
#include "format/format.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "format/line_edits.h"
#include "fuzz/target.h"

namespace {

std::string Edited(std::string text, const std::string& formatted) {
  const auto edits = rux::format::LineEdits(text, formatted);
  for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
    text.replace(edit->bytes.begin, edit->bytes.end - edit->bytes.begin, edit->text);
  }
  return text;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using fuzz::Expect;
  const std::string text(data, data + size);
  for (const bool blank_lines : {false, true}) {
    const rux::format::Options options{blank_lines};
    const rux::format::Formatted once = rux::format::Format(text, options);
    if (once.refusal) {
      Expect(once.text == text, "a refused text stays as it is");
      // The formatter compares what it wrote with what it read, and refuses a difference.
      Expect(once.refusal->reason != rux::format::kReadDifferently, "the meaning stays the same");
      continue;
    }
    const rux::format::Formatted twice = rux::format::Format(once.text, options);
    if (!blank_lines) Expect(Edited(text, once.text) == once.text, "edits of lines do the same");
    Expect(!twice.refusal, "a formatted text has no errors");
    Expect(twice.text == once.text, "a formatted text does not change");
  }
  return 0;
}
