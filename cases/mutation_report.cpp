#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "cases/case.h"
#include "cases/mutation.h"
#include "machine/place.h"
#include "profile/profile.h"
#include "support/json.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace rux::cases {
namespace {

// How many cases are named for people.
constexpr std::size_t kMostNames = 3;

// "limit of fans, limit of inlet and 4 more"
std::string NamesOf(const std::vector<const Case*>& cases) {
  std::string names;
  for (std::size_t i = 0; i < std::min(cases.size(), kMostNames); ++i)
    names += (i == 0 ? "" : ", ") + support::SafeText(cases[i]->name);
  if (cases.size() > kMostNames) names += fmt::format(" and {} more", cases.size() - kMostNames);
  return names;
}

}  // namespace

void WriteText(const MutationResult& result, bool only_unnoticed, support::TextStream& out) {
  out += profile::TitleOf(result.profile) + '\n';
  out += support::SafeFormat("{}: {}\n", result.file, result.machine);
  for (const Mutant& mutant : result.mutants) {
    const bool is_noticed = !mutant.noticed_by.empty();
    if (is_noticed && only_unnoticed) continue;
    out += support::SafeFormat("  {}  {}", is_noticed ? "noticed  " : "UNNOTICED", mutant.text);
    if (mutant.place) out += "  " + mutant.place->SafeText();
    out += '\n';
    if (is_noticed) out += "      by " + NamesOf(mutant.noticed_by) + '\n';
  }
  const std::size_t all = std::max<std::size_t>(result.mutants.size(), 1);
  out += fmt::format("{} of {} changes are noticed ({} %)", result.noticed(), result.mutants.size(),
                     result.noticed() * 100 / all);
  if (result.left_out > 0) {
    out += fmt::format(", {} not compared under this profile",
                       support::CountText(result.left_out, "limit"));
  }
  out += '\n';
}

void WriteJson(const std::vector<MutationResult>& results, support::TextStream& out) {
  support::WriteJson(out, [&](support::JsonObject& json) {
    json.Schema(1);
    json.Objects("files", results, [](support::JsonObject& file, const MutationResult& result) {
      file.Member("file", result.file);
      file.Member("machine", result.machine);
      profile::WriteProfile(result.profile, file);
      file.Member("noticed", result.noticed());
      file.Member("not_compared", result.left_out);
      file.Objects("changes", result.mutants,
                   [](support::JsonObject& change, const Mutant& mutant) {
                     change.Member("text", mutant.text);
                     machine::WritePlace(change, mutant.place);
                     change.Array("noticed_by", [&](support::JsonArray& names) {
                       for (const Case* each : mutant.noticed_by) names.Item(each->name);
                     });
                   });
    });
  });
}

}  // namespace rux::cases
