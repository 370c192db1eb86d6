#include "inspect/kinds.h"

#include <strings.h>

#include <algorithm>

#include "ruxcomp/identifiers.h"

namespace rux::inspect {
namespace {

// The script language's kinds that act while a script is read and leave nothing in the meta file.
bool IsCompiled(std::uint32_t section) {
  return section != RUX_SECT_DEFINE && section != RUX_SECT_IFDEF && section != RUX_SECT_INCLUDE;
}

bool HasNames(std::uint32_t section) {
  return section == RUX_SECT_GROUP || section == RUX_SECT_SENSOR || section == RUX_SECT_DEVICE ||
         section == RUX_SECT_ACTION || section == RUX_SECT_TABLE || section == RUX_SECT_PELMGROUP;
}

std::vector<Kind> CompiledKinds() {
  std::vector<Kind> kinds;
#define SECTION(keyword, kind, notation, form, naming, uniqueness)                 \
  if (IsCompiled(RUX_SECT_##keyword)) {                                            \
    kinds.push_back({#keyword, RUX_SECT_##keyword, HasNames(RUX_SECT_##keyword)}); \
  }
#include "ruxcomp/language/sections.def"
  return kinds;
}

}  // namespace

const std::vector<Kind>& Kinds() {
  static const std::vector<Kind> kinds = CompiledKinds();
  return kinds;
}

const Kind* FindKind(const std::string& keyword) {
  const auto found = std::find_if(Kinds().begin(), Kinds().end(), [&](const Kind& kind) {
    return strcasecmp(kind.keyword.c_str(), keyword.c_str()) == 0;
  });
  return found == Kinds().end() ? nullptr : &*found;
}

}  // namespace rux::inspect
