// Loading a meta file and finding its sections.
#include <cstdint>
#include <cstring>
#include <string>

#include "backend/compile_pass.h"
#include "backend/symbol_tables.h"
#include "query/name_matcher.h"
#include "query/result.h"
#include "query/section_index.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/query.h"
#include "ruxcomp/records.h"

namespace ruxcomp::core {

namespace {

// The result of the search for a section: the section, or the code that says why there is none.
struct Search {
  tagGCSECT* section;
  RuxLastError code;
};

GCSECTION Answer(const Search& search) { return Result(search.code, GCSECTION{search.section}); }

// How many sections of a kind there are, and the one at an ordinal among them; null when there are
// fewer.
struct KindWalk {
  KindWalk(std::uint32_t kind, std::uint32_t ordinal) {
    if (const auto known = SectionIndex::OfKind(kind)) {
      count = static_cast<std::uint32_t>(known->size());
      if (ordinal < count) found = (*known)[ordinal];
      return;
    }
    for (tagGCSECT* section : g_GCHead) {
      if (section->identifier == kind && count++ == ordinal) found = section;
    }
  }

  std::uint32_t count = 0;
  tagGCSECT* found = nullptr;
};

// What the index knows of a search.
Search Known(const SectionIndex::Answer& answer, RuxLastError others_found,
             RuxLastError nothing_to_compare) {
  if (answer.section) return {answer.section, RUX_ERROR_OK};
  if (!answer.has_kind) return {nullptr, RUX_ERROR_NO_SECTION};
  return {nullptr, answer.has_others ? others_found : nothing_to_compare};
}

// The walk over all sections of a kind. `offered` gives the table index that an entry offers for
// comparing, null when it offers none; `is_sought` compares; `is_compared` says whether an index
// that does not match counts as compared.
template <class Offered, class IsSought, class IsCompared>
Search Walk(std::uint32_t kind, Offered offered, IsSought is_sought, IsCompared is_compared,
            RuxLastError others_found, RuxLastError nothing_to_compare) {
  RuxLastError code = RUX_ERROR_NO_SECTION;
  for (tagGCSECT* section : g_GCHead) {
    if (section->identifier != kind) continue;
    if (code == RUX_ERROR_NO_SECTION) code = nothing_to_compare;
    for (const tagGCENTRY& entry : section->entries) {
      const std::uint32_t* index = offered(entry);
      if (!index) continue;
      if (is_sought(*index)) return {section, RUX_ERROR_OK};
      if (code == nothing_to_compare && is_compared(*index)) code = others_found;
    }
  }
  return {nullptr, code};
}

}  // namespace

}  // namespace ruxcomp::core

using namespace ruxcomp::core;

std::uint32_t gcInit(const std::string& path, tagMETAFILEINFO* info) {
  const std::uint32_t read = ReadMeta(path, info);
  return Result(read ? RUX_ERROR_OK : RUX_ERROR_CANNOT_READ, read);
}

std::uint32_t gcUnInit() {
  CompDestory();
  return 1;
}

std::uint32_t gcGetSectCount(std::uint32_t section) {
  const KindWalk sections(section, kNoNumber);
  return Result(RUX_ERROR_OK, sections.count);
}

GCSECTION gcGetSectByIndex(std::uint32_t section, std::uint32_t ordinal) {
  const KindWalk sections(section, ordinal);
  if (sections.found) return Answer({sections.found, RUX_ERROR_OK});
  return Answer({nullptr, sections.count == 0 ? RUX_ERROR_NO_SECTION : RUX_ERROR_OUT_OF_RANGE});
}

GCSECTION gcGetSectByID(std::uint32_t section, std::uint32_t id) {
  if (const auto known = SectionIndex::WithId(section, id)) {
    return Answer(Known(*known, RUX_ERROR_ID_NOT_FOUND, RUX_ERROR_NO_IDS));
  }
  // Every ID counts as compared, also one that no table has.
  return Answer(Walk(
      section, OfferedId, NumberMatcher(id), [](std::uint32_t) { return true; },
      RUX_ERROR_ID_NOT_FOUND, RUX_ERROR_NO_IDS));
}

GCSECTION gcGetSectByName(std::uint32_t section, const char* name) {
  if (!name) name = "";
  if (const auto known = SectionIndex::WithName(section, name)) {
    return Answer(Known(*known, RUX_ERROR_NAME_NOT_FOUND, RUX_ERROR_NO_NAMES));
  }
  const auto offered = [&](const tagGCENTRY& entry) { return OfferedName(section, entry); };
  const auto is_name = [](std::uint32_t index) {
    return GetTblData(index).kind == RUX_DATA_STRING;
  };
  return Answer(Walk(section, offered, NameMatcher(name), is_name, RUX_ERROR_NAME_NOT_FOUND,
                     RUX_ERROR_NO_NAMES));
}

std::uint32_t gcGetGroupIndex(const char* name) {
  if (!name) name = "";
  const auto* group = static_cast<const tagGCSECT*>(gcGetSectByName(RUX_SECT_GROUP, name));
  if (!group) {
    // The root group has an index but no section.
    if (std::strcmp(name, kRootGroup) == 0) return Result(RUX_ERROR_OK, std::uint32_t{0});
    return Result(RUX_ERROR_NO_SECTION, kNoNumber);
  }
  for (const tagGCENTRY& entry : group->entries) {
    if (entry.identifier != RUX_ENTRY_NAME || entry.values.empty()) continue;
    return Result(RUX_ERROR_OK, OrdinalOf(entry.values.front()));
  }
  return Result(RUX_ERROR_NO_NAMES, kNoNumber);
}
