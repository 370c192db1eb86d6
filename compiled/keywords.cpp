#include "compiled/keywords.h"

#include <algorithm>
#include <iterator>

#include "ruxcomp/identifiers.h"

namespace rux::compiled {
namespace {

constexpr EntryForm kEntryForms[] = {
#define FIXED_ENTRY(name, keyword, payload, number, compiled) \
  {kKey##name, keyword, RUX_ENTRY_##name, 0, 0},
#define NAMED_ENTRY(name, keyword, payload, number, table, prefix) \
  {kKey##name, keyword, 0, RUX_CLASS_##table, ruxcomp::language::prefix.size()},
#define PLAIN_ENTRY(name, keyword, payload, number) {kKey##name, keyword, 0, 0, 0},
#include "ruxcomp/language/entries.def"
};

struct KindRow {
  std::uint32_t kind;
  const char* keyword;
};

constexpr KindRow kKinds[] = {
#define SECTION(keyword, kind, notation, form, naming, uniqueness) {kind, #keyword},
#include "ruxcomp/language/sections.def"
};

template <class Rows, class Fits>
auto Find(const Rows& rows, Fits fits) {
  const auto* row = std::find_if(std::begin(rows), std::end(rows), fits);
  return row == std::end(rows) ? nullptr : row;
}

const char* KeywordOf(std::uint32_t kind) {
  const KindRow* row = Find(kKinds, [&](const KindRow& each) { return each.kind == kind; });
  return row == nullptr ? nullptr : row->keyword;
}

}  // namespace

const EntryForm* FindEntryForm(std::uint32_t source) {
  return Find(kEntryForms, [&](const EntryForm& each) { return each.source == source; });
}

const char* SourceSectionKeyword(std::uint32_t identifier) {
  return KeywordOf(identifier - kSourceSection);
}

const char* SourceEntryKeyword(std::uint32_t identifier) {
  const EntryForm* form = FindEntryForm(identifier);
  return form == nullptr ? nullptr : form->keyword;
}

const char* CompiledSectionKeyword(std::uint32_t identifier) {
  // The last kinds act while a script is read and have no compiled form.
  return identifier > RUX_SECT_REPEATER ? nullptr : KeywordOf(identifier - kCompiledSection);
}

const char* CompiledEntryKeyword(std::uint32_t identifier) {
  const EntryForm* form = Find(kEntryForms, [&](const EntryForm& each) {
    return each.compiled != 0 && each.compiled == identifier;
  });
  return form == nullptr ? nullptr : form->keyword;
}

}  // namespace rux::compiled
