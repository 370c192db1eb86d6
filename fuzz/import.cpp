// Sources of imports: arbitrary bytes in every format but dts, which another program compiles. Each
// is read, or refused with one line that names it; what is read becomes scripts that are formatted,
// merge with themselves, and have an outcome for every item.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "format/format.h"
#include "fuzz/target.h"
#include "imports/board.h"
#include "imports/formats.h"
#include "imports/layout.h"
#include "imports/merge.h"
#include "losses/ledger.h"
#include "losses/report.h"
#include "support/failure.h"
#include "support/text_stream.h"
#include "support/utf8.h"

namespace {

using fuzz::Expect;
using rux::imports::ScriptFile;
using rux::losses::Ledger;

constexpr char kPath[] = "source";

void CheckScripts(const std::vector<ScriptFile>& files) {
  for (const ScriptFile& file : files) {
    if (file.name.back() == 'n') continue;  // the project file
    const rux::format::Formatted formatted = rux::format::Format(file.text);
    Expect(!formatted.refusal && formatted.text == file.text, "scripts are formatted");
    const rux::imports::Merged merged = rux::imports::Merge(file.text, file.text, file.text);
    Expect(merged.text == file.text && merged.conflicts.empty(), "nothing changed, nothing merged");
    const rux::imports::Merged edited = rux::imports::Merge("", file.text, "");
    Expect(edited.text == file.text, "edits stay");
  }
}

void CheckReport(const Ledger& ledger) {
  for (const rux::losses::Form& form : rux::losses::kForms) {
    const std::string text =
        rux::support::WrittenText([&](rux::support::TextStream& out) { form.write(ledger, out); });
    Expect(rux::support::IsUtf8(text), "reports are text");
  }
}

void ImportAs(const rux::imports::Format& format, const std::string& bytes) {
  Ledger ledger;
  try {
    const rux::imports::Board board = format.read({{kPath, bytes}}, {}, ledger);
    CheckScripts(rux::imports::LayOut(board, {}, ledger));
    CheckReport(ledger);
  } catch (const rux::support::Failure& failure) {
    const std::string_view text = failure.what();
    Expect(text.substr(0, sizeof kPath - 1) == kPath, "a refusal names the source");
    Expect(text.find('\n') == std::string_view::npos, "a refusal is one line");
    Expect(rux::support::IsUtf8(text), "a refusal is text");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  for (const rux::imports::Format& format : rux::imports::Formats()) {
    if (format.name != "dts") ImportAs(format, bytes);
  }
  return 0;
}
