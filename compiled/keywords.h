// The identifiers of compiled files as keywords of the script language.
#ifndef COMPILED_KEYWORDS_H_
#define COMPILED_KEYWORDS_H_

#include <cstddef>
#include <cstdint>

#include "ruxcomp/language/entries.h"

namespace rux::compiled {

// What a key of the script language is in both forms.
struct EntryForm {
  std::uint32_t source;      // the identifier in a debug meta file: 0x10......
  const char* keyword;       // the key, or what keys begin with; "" for names of the script's own
  std::uint32_t compiled;    // the identifier in a meta file, a RUX_ENTRY_...; 0: not a fixed one
  std::uint32_t name_class;  // of the table that has the key less its prefix; 0: no table
  std::size_t prefix;        // how many bytes of the key its name in the table lacks
};

// Null when no key has that identifier of a debug meta file.
const EntryForm* FindEntryForm(std::uint32_t source);

// Both return null for what is no such identifier: that of a section, 0x2000000N, or of an entry in
// a debug meta file.
const char* SourceSectionKeyword(std::uint32_t identifier);
const char* SourceEntryKeyword(std::uint32_t identifier);

// The same for meta files: RUX_SECT_..., and RUX_ENTRY_....
const char* CompiledSectionKeyword(std::uint32_t identifier);
const char* CompiledEntryKeyword(std::uint32_t identifier);

// Sections have the number of their kind in both forms.
enum KindNumber : std::uint32_t {
#define SECTION(keyword, kind, notation, form, naming, uniqueness) kKind##keyword = (kind),
#include "ruxcomp/language/sections.def"
};
inline constexpr std::uint32_t kSourceSection = 0x20000000;
inline constexpr std::uint32_t kCompiledSection = 0x01000000;

// The identifiers of keys in a debug meta file: kKeyNAME, kKeyPARENT, ...
enum SourceKey : std::uint32_t {
#define FIXED_ENTRY(name, keyword, payload, number, compiled) \
  kKey##name = ruxcomp::language::ENTRY_##name,
#define NAMED_ENTRY(name, keyword, payload, number, table, prefix) \
  kKey##name = ruxcomp::language::ENTRY_##name,
#define PLAIN_ENTRY(name, keyword, payload, number) kKey##name = ruxcomp::language::ENTRY_##name,
#include "ruxcomp/language/entries.def"
};

// The class of payload that an entry of a debug meta file has.
enum class PayloadClass : std::uint32_t {
  kNumber = 0x10010000,
  kText = 0x10020000,
  kList = 0x10040000,
  kValue = 0x10080000,
  kRepeater = 0x10100000,
};
constexpr PayloadClass PayloadClassOf(std::uint32_t identifier) {
  return static_cast<PayloadClass>(identifier & 0xFFFF0000);
}

// Whether the text or the list of such an entry is one of numbers.
constexpr bool IsNumeric(std::uint32_t identifier) { return (identifier & 0x0000F000) == 0x8000; }

}  // namespace rux::compiled

#endif  // COMPILED_KEYWORDS_H_
