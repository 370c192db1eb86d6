#include "diff/pairing.h"

#include <fmt/format.h>

#include <string>
#include <vector>

#include "diff/compare.h"
#include "diff/report.h"
#include "machine/load.h"
#include "machine/machine.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace rux::diff {

Pairing PairingOf(const std::string& meta, const std::string& debug_meta,
                  const machine::LoadOptions& options) {
  const std::vector<machine::Machine> machines = machine::Load({meta, debug_meta}, options);
  if (machines[0].origins() != nullptr) {
    throw support::Failure(support::ExitStatus::kTrouble, "{} must be a meta file", meta);
  }
  if (machines[1].origins() == nullptr) {
    throw support::Failure(support::ExitStatus::kTrouble,
                           "{} must be a debug meta file or a script", debug_meta);
  }
  return {meta, debug_meta, Compare(machines[0], machines[1])};
}

std::string ResultText(const Pairing& pairing) {
  const std::string files =
      support::SafePath(pairing.meta) + " and " + support::SafePath(pairing.debug_meta);
  if (pairing.belongs()) return files + " belong together";
  return fmt::format("{} do not belong together: {}", files,
                     support::CountText(pairing.differences.size(), "difference"));
}

void WriteText(const Pairing& pairing, bool uses_colour, support::TextStream& out) {
  out += ResultText(pairing);
  if (pairing.belongs()) {
    out += '\n';
  } else {
    out += pairing.differences.size() == 1 ? "\n" : ", of which the first is\n";
    WriteChanges({pairing.differences.front()}, uses_colour, out);
  }
}

void WriteMatch(const Pairing& pairing, support::JsonObject& json) {
  json.Schema(1);
  json.Member("meta", pairing.meta);
  json.Member("debug_meta", pairing.debug_meta);
  json.Member("match", pairing.belongs());
  json.Member("differences", pairing.differences.size());
  if (pairing.belongs()) return;
  json.Object("first",
              [&](support::JsonObject& first) { WriteChange(pairing.differences.front(), first); });
}

}  // namespace rux::diff
