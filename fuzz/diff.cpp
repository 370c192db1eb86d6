// Two meta files, one after the other: what is sound is compared with itself, which has no changes,
// and with the other one both ways. All forms of the report can be written.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "diff/compare.h"
#include "diff/report.h"
#include "fuzz/sound_machine.h"
#include "fuzz/target.h"
#include "machine/machine.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace {

using fuzz::Expect;
using rux::machine::Machine;

void WriteAll(const rux::diff::Report& report) {
  for (const rux::diff::Form& form : rux::diff::kForms) {
    const std::string text = rux::support::WrittenText([&](rux::support::TextStream& out) {
      if (form.write != nullptr) return form.write(report, out);
      rux::diff::WriteText(report, false, out);
    });
    const bool has_text = !text.empty() || report.changes.empty();
    Expect(has_text, "a form says something of a change");
    Expect(rux::support::AreSafeLines(text), "no text of a machine controls a terminal");
  }
}

void Compare(const Machine& before, const Machine& after) {
  WriteAll(
      {{"old", before.file()}, {"new", after.file()}, rux::diff::Compare(before, after), 0, {}});
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  // The second file begins like the first.
  constexpr std::size_t kMagic = 16;
  const std::size_t second =
      size > kMagic ? bytes.find(bytes.substr(0, kMagic), kMagic) : std::string::npos;
  const std::optional<Machine> before = fuzz::SoundMachineOf(bytes.substr(0, second));
  if (!before) return 0;
  Expect(rux::diff::Compare(*before, *before).empty(), "a machine does not differ from itself");
  Compare(*before, Machine("nothing"));
  if (second == std::string::npos) return 0;
  const std::optional<Machine> after = fuzz::SoundMachineOf(bytes.substr(second));
  if (!after) return 0;
  Compare(*before, *after);
  Compare(*after, *before);
  return 0;
}
