// The flag word of sections and entries.
#ifndef RUXCOMP_LANGUAGE_NOTATION_H_
#define RUXCOMP_LANGUAGE_NOTATION_H_

#include <cstdint>

namespace ruxcomp::language {

using Notation = std::uint32_t;

// Both value bits are carried on entries with values and stored in the debug meta file; nothing
// reads them.
inline constexpr Notation kRequired = 1;
inline constexpr Notation kOptional = 2;  // optional, or added by a repeated key
inline constexpr Notation kValueBit4 = 4;
inline constexpr Notation kFreeName = 8;  // the key is a prefix or a name of the script's own
inline constexpr Notation kValueBit32 = 32;

struct NotationBit {
  Notation bit;
  const char* title;
};
inline constexpr NotationBit kNotationBits[] = {{kRequired, "required"},
                                                {kOptional, "optional"},
                                                {kValueBit4, "bit 4"},
                                                {kFreeName, "free name"},
                                                {kValueBit32, "bit 32"}};

// The combinations in use, as the rows of templates.def name them.
inline constexpr Notation kHookValue = kOptional | kValueBit4;
inline constexpr Notation kRequiredValue = kRequired | kValueBit4 | kValueBit32;
inline constexpr Notation kOptionalValue = kOptional | kValueBit4 | kValueBit32;
inline constexpr Notation kFree = kOptional | kFreeName;
inline constexpr Notation kFreeHookValue = kHookValue | kFreeName;
inline constexpr Notation kFreeValue = kOptionalValue | kFreeName;

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_NOTATION_H_
