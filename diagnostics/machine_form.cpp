#include "diagnostics/machine_form.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "support/text_stream.h"

namespace rux::diagnostics {
namespace {

constexpr MachineForm kForms[] = {
    {"gcc", WriteGccText, WriteGccPiece, WriteInARow},
    {"json", WriteJsonReport, WriteJsonPiece, WriteJsonReports},
    {"sarif", WriteSarifReport, WriteSarifPiece, WriteSarifReports},
    {"junit", WriteJunitReport, WriteJunitPiece, WriteJunitReports},
    {"github", WriteGithubText, WriteGithubPiece, WriteInARow},
};

}  // namespace

const MachineForm* FindMachineForm(std::string_view name) {
  const MachineForm* form =
      std::find_if(std::begin(kForms), std::end(kForms),
                   [&](const MachineForm& each) { return each.name == name; });
  return form == std::end(kForms) ? nullptr : form;
}

void WriteInARow(const Pieces& pieces, support::TextStream& out) {
  pieces.add_all([&](std::string_view piece) { out += piece; });
}

}  // namespace rux::diagnostics
