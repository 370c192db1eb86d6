#include "diagnostics/report.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

namespace rux::diagnostics {
namespace {

constexpr MachineForm kForms[] = {
    {"gcc", WriteGccText},
    {"json", WriteJsonReport},
    {"sarif", WriteSarifReport},
    {"github", WriteGithubText},
};

}  // namespace

std::string NotShownText(const Report& report) {
  return fmt::format("{} more diagnostic{} not shown; --max-errors 0 shows all", report.not_shown,
                     report.not_shown == 1 ? "" : "s");
}

const MachineForm* FindMachineForm(std::string_view name) {
  const MachineForm* form =
      std::find_if(std::begin(kForms), std::end(kForms),
                   [&](const MachineForm& each) { return each.name == name; });
  return form == std::end(kForms) ? nullptr : form;
}

}  // namespace rux::diagnostics
