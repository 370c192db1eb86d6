// What clients show a symbol as.
#ifndef SERVER_SYMBOL_KINDS_H_
#define SERVER_SYMBOL_KINDS_H_

#include <optional>

#include "index/records.h"
#include "ruxcomp/language/sections.h"

namespace rux::server {

// A number of the protocol. `space`: of an entry or name; none: a section of that kind.
int SymbolKindOf(ruxcomp::language::SectionId section, const std::optional<index::Space>& space);

}  // namespace rux::server

#endif  // SERVER_SYMBOL_KINDS_H_
