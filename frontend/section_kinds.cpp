#include "frontend/section_kinds.h"

#include <cstdint>

#include "frontend/identifiers.h"
#include "frontend/section.h"

namespace {

template <class Section, std::uint32_t Id, tagNOTATION Notation>
CRUXSection* Make() {
  return new Section(Id, Notation);
}

template <class Section>
CRUXSection* MakeEmpty() {
  return new Section();
}

}  // namespace

const SectionMaker kSectionMakers[] = {
#define SECTION(keyword, number, notation, form, naming, uniqueness) \
  {SECTION_##keyword, Make<CGS##keyword, SECTION_##keyword, notation>, MakeEmpty<CGS##keyword>},
#include "ruxcomp/language/sections.def"
};
