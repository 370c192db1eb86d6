#include "tool/compiled/keywords.h"

#include <algorithm>
#include <iterator>

#include "ruxcomp/identifiers.h"

namespace rux {
namespace {

struct Row {
  std::uint32_t identifier;
  const char* keyword;
};

template <class Rows>
const char* Find(const Rows& rows, std::uint32_t identifier) {
  const auto row = std::find_if(std::begin(rows), std::end(rows),
                                [&](const Row& each) { return each.identifier == identifier; });
  return row == std::end(rows) ? nullptr : row->keyword;
}

}  // namespace

const char* SourceSectionKeyword(std::uint32_t identifier) {
  static constexpr Row kRows[] = {
#define SECTION(keyword, kind, notation) {0x20000000 + (kind), #keyword},
#include "ruxcomp/sections.def"
  };
  return Find(kRows, identifier);
}

const char* CompiledSectionKeyword(std::uint32_t identifier) {
  // The last kinds act while a script is read and have no compiled form.
  if (identifier > RUX_SECT_REPEATER) return nullptr;
  static constexpr Row kRows[] = {
#define SECTION(keyword, kind, notation) {RUX_SECT_##keyword, #keyword},
#include "ruxcomp/sections.def"
  };
  return Find(kRows, identifier);
}

const char* SourceEntryKeyword(std::uint32_t identifier) {
  static constexpr Row kRows[] = {
#define FIXED_ENTRY(name, keyword, source, compiled) {source, keyword},
#define NAMED_ENTRY(name, keyword, source, table, prefix) {source, keyword},
#define PLAIN_ENTRY(name, keyword, source) {source, keyword},
#include "ruxcomp/entries.def"
  };
  return Find(kRows, identifier);
}

const char* CompiledEntryKeyword(std::uint32_t identifier) {
  static constexpr Row kRows[] = {
#define FIXED_ENTRY(name, keyword, source, compiled) {compiled, keyword},
#define NAMED_ENTRY(name, keyword, source, table, prefix)
#define PLAIN_ENTRY(name, keyword, source)
#include "ruxcomp/entries.def"
  };
  return Find(kRows, identifier);
}

}  // namespace rux
