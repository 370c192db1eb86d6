#include <iterator>

#include "frontend/identifiers.h"
#include "ruxcomp/data.h"

extern "C" {

const tagNTMAP g_NTMapSect[] = {
#define SECTION(keyword, kind, notation) {#keyword, SECTION_##keyword},
#include "ruxcomp/sections.def"
};
const std::uint32_t g_dwNTMSect = std::size(g_NTMapSect);

const tagNTMAP g_NTMapEntry[] = {
#define FIXED_ENTRY(name, keyword, identifier, compiled) {keyword, identifier},
#define NAMED_ENTRY(name, keyword, identifier, table, prefix) {keyword, identifier},
#define PLAIN_ENTRY(name, keyword, identifier) {keyword, identifier},
#include "ruxcomp/entries.def"
};
const std::uint32_t g_dwNTMEntry = std::size(g_NTMapEntry);

}  // extern "C"

static_assert(std::size(g_NTMapSect) == 14);
static_assert(std::size(g_NTMapEntry) == 37);
