// The identifiers of compiled files as keywords of the script language.
#ifndef TOOL_COMPILED_KEYWORDS_H_
#define TOOL_COMPILED_KEYWORDS_H_

#include <cstdint>

namespace rux {

// All of them return null for what is no such identifier.

// Of a debug meta file: 0x2000000N and 0x10......; "" for entries whose names are the script's own.
const char* SourceSectionKeyword(std::uint32_t identifier);
const char* SourceEntryKeyword(std::uint32_t identifier);

// Of a meta file: RUX_SECT_..., and RUX_ENTRY_....
const char* CompiledSectionKeyword(std::uint32_t identifier);
const char* CompiledEntryKeyword(std::uint32_t identifier);

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

}  // namespace rux

#endif  // TOOL_COMPILED_KEYWORDS_H_
