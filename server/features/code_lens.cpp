// textDocument/codeLens: how often each section with a name or an ID is referred to; the limits of
// sensors.
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "assistance/limits.h"
#include "assistance/outline.h"
#include "assistance/place.h"
#include "assistance/references.h"
#include "protocol/json.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/session.h"
#include "support/number_text.h"
#include "support/safe_text.h"

namespace rux::server {
namespace {

using assistance::OutlineEntry;
using protocol::Json;

// In all machines of the document; a place that several have counts once.
std::size_t CountOf(const std::vector<Asked>& places, const OutlineEntry& entry) {
  std::set<std::pair<std::string, std::uint32_t>> found;
  for (const Asked& asked : places) {
    const assistance::Place at{asked.at.index, asked.at.file, entry.name_range.begin};
    for (const assistance::Location& each : assistance::ReferencesAt(at, false)) {
      found.emplace(asked.machine.FileAt(each.file).whole_name, each.range.begin);
    }
  }
  return found.size();
}

// A command without a name does nothing: the text is for reading.
Json LensJson(const Asked& asked, const OutlineEntry& entry, const std::string& title) {
  return {{"range", RangeJson(asked, entry.name_range)},
          {"command", {{"title", title}, {"command", ""}}}};
}

Json LensesOf(const Session& session, const Json& params) {
  Json lenses = Json::array();
  const std::vector<Asked> places = AskedAbout(session, params);
  if (places.empty()) return lenses;
  const Asked& asked = places.front();
  for (const OutlineEntry& entry : assistance::OutlineOf(asked.at.index, asked.at.file)) {
    if (!entry.is_named) continue;
    lenses.push_back(
        LensJson(asked, entry, support::CountText(CountOf(places, entry), "reference")));
    const std::string limits =
        assistance::LimitsText(asked.at.index, entry.id, asked.machine.limits());
    if (!limits.empty()) lenses.push_back(LensJson(asked, entry, support::SafeText(limits)));
  }
  return lenses;
}

}  // namespace

Feature CodeLenses() {
  return {"codeLensProvider",
          {{"resolveProvider", false}},
          {{"textDocument/codeLens", Timing::kWithMachines, LensesOf}}};
}

}  // namespace rux::server
