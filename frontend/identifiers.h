// The identifiers of the source model, generated from the keyword lists.
#ifndef FRONTEND_IDENTIFIERS_H_
#define FRONTEND_IDENTIFIERS_H_

#include <cstddef>
#include <cstdint>

// Section identifiers: the mark of a section, the kind number below.
inline constexpr std::uint32_t kSectionMark = 0x20000000;
inline constexpr std::uint32_t kKindMask = 0x00FFFFFF;
enum SectionId : std::uint32_t {
#define SECTION(keyword, kind, notation) SECTION_##keyword = kSectionMark + (kind),
#include "ruxcomp/sections.def"
};

// Entry identifiers: 0x10000000 marks an entry, bits 16 to 23 name its payload.
enum EntryId : std::uint32_t {
#define FIXED_ENTRY(name, keyword, identifier, compiled) ENTRY_##name = (identifier),
#define NAMED_ENTRY(name, keyword, identifier, table, prefix) ENTRY_##name = (identifier),
#define PLAIN_ENTRY(name, keyword, identifier) ENTRY_##name = (identifier),
#include "ruxcomp/entries.def"
};

// The payload that an entry identifier asks for.
inline constexpr std::uint32_t kPayloadMask = 0xFFFF0000;
enum PayloadType : std::uint32_t {
  PAYLOAD_DWORD = 0x10010000,
  PAYLOAD_STRING = 0x10020000,
  PAYLOAD_STRINGLIST = 0x10040000,
  PAYLOAD_VALUE = 0x10080000,
  PAYLOAD_REPEATER = 0x10100000,
};
constexpr std::uint32_t PayloadOf(std::uint32_t identifier) { return identifier & kPayloadMask; }

// Strings whose text is a number or a defined word, and lists of numbers.
inline constexpr std::uint32_t kNumericMask = 0xFFFFF000;
constexpr bool IsNumericString(std::uint32_t identifier) {
  return (identifier & kNumericMask) == 0x10028000;
}
constexpr bool IsNumericList(std::uint32_t identifier) {
  return (identifier & kNumericMask) == 0x10048000;
}

// How much of an entry's key stands before the name that its symbol table holds; 0 for entries
// whose whole key is the name, or that no table has.
constexpr std::size_t PrefixOf(EntryId identifier) {
  switch (identifier) {
#define FIXED_ENTRY(name, keyword, id, compiled) \
  case ENTRY_##name:                             \
    return 0;
#define NAMED_ENTRY(name, keyword, id, table, prefix) \
  case ENTRY_##name:                                  \
    return prefix;
#define PLAIN_ENTRY(name, keyword, id) \
  case ENTRY_##name:                   \
    return 0;
#include "ruxcomp/entries.def"
  }
  return 0;
}

// The flag word of sections and entries. Bits 4 and 32 are carried on VALUE entries and told on in
// the debug meta file; nothing here reads them.
using tagNOTATION = std::uint32_t;
inline constexpr tagNOTATION kRequired = 1;
inline constexpr tagNOTATION kOptional = 2;  // optional, or added by a repeated key
inline constexpr tagNOTATION kValueBit4 = 4;
inline constexpr tagNOTATION kFreeName = 8;  // the key is a prefix or a name of the script's own
inline constexpr tagNOTATION kValueBit32 = 32;

#endif  // FRONTEND_IDENTIFIERS_H_
