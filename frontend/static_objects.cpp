// The objects of compile runs that live from load to unload of the library, in their order of
// construction; unload destroys them in the reverse order. They are in one file because the order
// holds only within one.
#include <cstdint>
#include <ios>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/arena.h"
#include "frontend/defined_words.h"
#include "frontend/interned_string.h"
#include "frontend/lifetime.h"
#include "frontend/obj.h"
#include "frontend/parse.h"
#include "frontend/section_kinds.h"  // IWYU pragma: keep
#include "frontend/text.h"
#include "ruxcomp/model/seeded_hash.h"

namespace ruxcomp::core {

std::uint32_t CRUXParse::m_opened = 0;

// Before the reader plug-in is looked for: when it is missing, the host's Output is called, which
// may write to a standard stream.
namespace {
RUX_FROM_LOAD_TO_UNLOAD const std::ios_base::Init standard_streams;
}

RUX_FROM_LOAD_TO_UNLOAD CRUXParse g_Parse;  // loads the reader plug-in

RUX_FROM_LOAD_TO_UNLOAD DefinedWords g_tblPreDefine;

RUX_FROM_LOAD_TO_UNLOAD std::vector<std::string> CRUXObj::m_svstrIncFiles;

// Before the lists, so that sections may be dropped until the lists are gone.
RUX_FROM_LOAD_TO_UNLOAD Arena CRUXObj::m_arena;
RUX_FROM_LOAD_TO_UNLOAD ruxcomp::detail::HashMap<std::string_view, const Text*>
    InternedString::m_texts;

// Unload destroys the lists, never the sections that they point to.
RUX_FROM_LOAD_TO_UNLOAD std::vector<std::vector<CRUXSection*>*> CRUXSection::m_svpHSection;

#define SECTION(keyword, number, notation, form, naming, uniqueness) \
  template <>                                                        \
  RUX_FROM_LOAD_TO_UNLOAD std::vector<CRUXSection*> CGSSection<SECTION_##keyword>::m_sHeader{};
#include "ruxcomp/language/sections.def"

}  // namespace ruxcomp::core
