#include "diagnostics/report.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace rux::diagnostics {
namespace {

constexpr MachineForm kForms[] = {
    {"gcc", GccText},
    {"json", JsonReport},
    {"sarif", SarifReport},
    {"github", GithubText},
};

}  // namespace

const MachineForm* FindMachineForm(std::string_view name) {
  const MachineForm* form =
      std::find_if(std::begin(kForms), std::end(kForms),
                   [&](const MachineForm& each) { return each.name == name; });
  return form == std::end(kForms) ? nullptr : form;
}

}  // namespace rux::diagnostics
