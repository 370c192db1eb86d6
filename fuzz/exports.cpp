// A meta file: of what is sound, every format can be written, twice the same, and the ledger has
// each entry once. Constants are ASCII, and JSON and the commands of simulators are lines that are
// safe to show.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "exports/formats.h"
#include "fuzz/sound_machine.h"
#include "fuzz/target.h"
#include "losses/ledger.h"
#include "machine/machine.h"
#include "ruxcomp/model/handles.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace {

using fuzz::Expect;
using rux::exports::Format;
using rux::losses::Ledger;
using rux::machine::Machine;

std::string Written(const Format& format, const Machine& machine, Ledger& ledger) {
  return rux::support::WrittenText([&](rux::support::TextStream& out) {
    rux::exports::WriteMachine(format, machine, ledger, true, out);
  });
}

std::size_t EntriesOf(const Machine& machine) {
  std::size_t entries = 0;
  for (const ruxcomp::Section section : machine.model().sections())
    entries += section.entries().size();
  return entries;
}

bool HasTextsAsTheyAre(std::string_view format) {
  return format == "csv" || format.substr(0, 10) == "prometheus";
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto machine = fuzz::SoundMachineOf(std::string(data, data + size));
  if (!machine) return 0;
  for (const Format& format : rux::exports::kFormats) {
    Ledger ledger;
    const std::string text = Written(format, *machine, ledger);
    Expect(ledger.entries().size() == (format.is_of_entries ? EntriesOf(*machine) : 0),
           "the ledger has every entry");
    Ledger again;
    Expect(Written(format, *machine, again) == text, "the same machine is written the same");
    Expect(HasTextsAsTheyAre(format.name) || rux::support::AreSafeLines(text),
           "no text of a machine controls a terminal");
  }
  return 0;
}
