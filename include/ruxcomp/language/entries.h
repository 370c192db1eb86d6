// The flag word of sections and entries, and the entries by keyword and by identifier.
#ifndef RUXCOMP_LANGUAGE_ENTRIES_H_
#define RUXCOMP_LANGUAGE_ENTRIES_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"

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

// What an entry's text becomes: bits 16 to 23 of its identifier, below the mark of an entry.
inline constexpr std::uint32_t kPayloadMask = 0xFFFF0000;
enum PayloadType : std::uint32_t {
  PAYLOAD_DWORD = 0x10010000,
  PAYLOAD_STRING = 0x10020000,
  PAYLOAD_STRINGLIST = 0x10040000,
  PAYLOAD_VALUE = 0x10080000,
  PAYLOAD_REPEATER = 0x10100000,
};
constexpr std::uint32_t PayloadOf(std::uint32_t identifier) { return identifier & kPayloadMask; }

// Of texts and lists: their texts are numbers or defined words.
inline constexpr std::uint32_t kNumeric = 0x00008000;
inline constexpr std::uint32_t kNumericMask = 0xFFFFF000;

// The payload column of entries.def.
enum class EntryPayload : std::uint32_t {
  kDword = PAYLOAD_DWORD,
  kText = PAYLOAD_STRING,
  kNumberText = PAYLOAD_STRING | kNumeric,
  kNumberList = PAYLOAD_STRINGLIST | kNumeric,
  kValue = PAYLOAD_VALUE,
  kRepeater = PAYLOAD_REPEATER,
};
constexpr std::uint32_t EntryIdentifier(EntryPayload payload, std::uint32_t number) {
  return static_cast<std::uint32_t>(payload) | number;
}

constexpr bool IsNumericString(std::uint32_t identifier) {
  return (identifier & kNumericMask) == EntryIdentifier(EntryPayload::kNumberText, 0);
}
constexpr bool IsNumericList(std::uint32_t identifier) {
  return (identifier & kNumericMask) == EntryIdentifier(EntryPayload::kNumberList, 0);
}

// Entry identifiers in the source model and the debug meta file.
enum EntryId : std::uint32_t {
#define FIXED_ENTRY(name, keyword, payload, number, compiled) \
  ENTRY_##name = EntryIdentifier(EntryPayload::payload, number),
#define NAMED_ENTRY(name, keyword, payload, number, table, prefix) \
  ENTRY_##name = EntryIdentifier(EntryPayload::payload, number),
#define PLAIN_ENTRY(name, keyword, payload, number) \
  ENTRY_##name = EntryIdentifier(EntryPayload::payload, number),
#include "ruxcomp/language/entries.def"
};

// The mark of a fixed entry identifier in the meta file.
inline constexpr std::uint32_t kCompiledEntryMark = 0x02000000;

// What the script's own names look like; see NAMES_OF in entries.def.
enum class NameForm : std::uint8_t {
  kAny,
  kNoDigitFirst,  // anything that does not begin with a digit
  kNumber,        // a number
  kCells,         // a cell of a table, or the first and the last one: "0.255"
};
struct NameFormRow {
  EntryId entry;
  NameForm form;
};
inline constexpr NameFormRow kNameForms[] = {
#define NAMES_OF(name, form) {ENTRY_##name, NameForm::form},
#include "ruxcomp/language/entries.def"
};
static_assert(AreDistinct(kNameForms, [](const NameFormRow& row) { return row.entry; }));

constexpr NameForm NameFormOf(std::uint32_t entry) {
  const NameFormRow* found =
      FindRow(kNameForms, [&](const NameFormRow& row) { return row.entry == entry; });
  return found != nullptr ? found->form : NameForm::kAny;
}

// Which readings a limit keeps out; see LIMIT_OF in entries.def.
enum class LimitSide : std::uint8_t {
  kMost,   // those above it
  kLeast,  // those below it
};
struct LimitRow {
  EntryId entry;
  LimitSide side;
};
inline constexpr LimitRow kLimits[] = {
#define LIMIT_OF(name, side) {ENTRY_##name, LimitSide::side},
#include "ruxcomp/language/entries.def"
};

// Null for an entry that is not a limit.
constexpr const LimitRow* FindLimit(std::uint32_t entry) {
  return FindRow(kLimits, [&](const LimitRow& row) { return row.entry == entry; });
}

struct EntryRow {
  const char* name;         // of the row
  const char* keyword;      // "" for a name of the script's own
  EntryId source;           // in the source model
  EntryPayload payload;     // also part of the identifier
  std::uint32_t compiled;   // the fixed identifier in the meta file; 0 when there is none
  std::uint32_t table;      // the class of the symbol table that has the name; 0: no table
  std::string_view prefix;  // of the key, before that name

  constexpr bool IsCompiled() const { return compiled != 0 || table != 0; }
};

inline constexpr EntryRow kEntries[] = {
#define FIXED_ENTRY(name, keyword, payload, number, compiled) \
  {#name, keyword, ENTRY_##name, EntryPayload::payload, kCompiledEntryMark + (compiled), 0, {}},
#define NAMED_ENTRY(name, keyword, payload, number, table, prefix) \
  {#name, keyword, ENTRY_##name, EntryPayload::payload, 0, CLASS_##table, prefix},
#define PLAIN_ENTRY(name, keyword, payload, number) \
  {#name, keyword, ENTRY_##name, EntryPayload::payload, 0, 0, {}},
#include "ruxcomp/language/entries.def"
};

constexpr bool HaveOwnCompiledIdentifiers() {
  for (const EntryRow& row : kEntries) {
    const auto is_alike = [&](const EntryRow& other) {
      return other.compiled == row.compiled && other.source != row.source;
    };
    if (row.compiled != 0 && HasRow(kEntries, is_alike)) return false;
  }
  return true;
}
static_assert(AreDistinct(kEntries, [](const EntryRow& row) { return row.source; }),
              "the number of an entry is its own among those with its payload");
static_assert(HaveOwnCompiledIdentifiers(), "the compiled number of a fixed entry is its own");
static_assert(!HasRow(kEntries,
                      [](const EntryRow& row) { return !BeginsWith(row.keyword, row.prefix); }),
              "a keyword begins with the prefix of its row");

inline constexpr std::size_t kEntryCount = sizeof kEntries / sizeof *kEntries;

// The keywords with their sizes, row by row.
inline constexpr std::array<std::string_view, kEntryCount> kKeywords = [] {
  std::array<std::string_view, kEntryCount> keywords{};
  for (std::size_t row = 0; row < kEntryCount; ++row) keywords[row] = kEntries[row].keyword;
  return keywords;
}();
constexpr std::size_t PlaceOf(const EntryRow& row) {
  return static_cast<std::size_t>(&row - kEntries);
}
constexpr std::string_view KeywordOf(const EntryRow& row) { return kKeywords[PlaceOf(row)]; }

// The places of rows by a number below kSlots that is computed of each: those of one number in
// their order. Places, not rows: compilers that check for undefined behaviour do not compare
// addresses in constants.
class EntryIndex {
 public:
  template <class SlotOf>
  constexpr explicit EntryIndex(SlotOf slot_of) {
    for (std::uint8_t& first : first_) first = kNone;
    for (std::uint8_t place = kNone; place-- > 0;) {
      std::uint8_t& first = first_[slot_of(place)];
      next_[place] = first;
      first = place;
    }
  }

  // kEntryCount when there is none.
  constexpr std::size_t First(std::size_t slot) const { return first_[slot]; }
  constexpr std::size_t Next(std::size_t place) const { return next_[place]; }

  static constexpr std::size_t kSlots = 128;

 private:
  static_assert(kEntryCount < 256, "a place is a byte");
  static constexpr std::uint8_t kNone = kEntryCount;

  std::array<std::uint8_t, kSlots> first_{};
  std::array<std::uint8_t, kEntryCount> next_{};
};

constexpr std::size_t KeywordSlot(std::string_view key) {
  if (key.empty()) return 0;
  const auto code = [](char c) { return static_cast<std::size_t>(static_cast<unsigned char>(c)); };
  return (key.size() * 7 + code(key.front()) + code(key.back()) * 3 + code(key[key.size() / 2])) %
         EntryIndex::kSlots;
}
inline constexpr EntryIndex kEntriesByKeyword{
    [](std::size_t place) { return KeywordSlot(kKeywords[place]); }};

// The place of the first row with that keyword, and of the next one with the same; kEntryCount when
// there is none.
constexpr std::size_t PlaceOfKeyword(std::size_t place, std::string_view keyword) {
  while (place < kEntryCount && kKeywords[place] != keyword) place = kEntriesByKeyword.Next(place);
  return place;
}
constexpr std::size_t FirstOfKeyword(std::string_view key) {
  return PlaceOfKeyword(kEntriesByKeyword.First(KeywordSlot(key)), key);
}
constexpr std::size_t NextOfKeyword(std::size_t place) {
  return PlaceOfKeyword(kEntriesByKeyword.Next(place), kKeywords[place]);
}

constexpr std::size_t IdentifierSlot(std::uint32_t source) {
  return (source ^ source >> 13 ^ source >> 10) % EntryIndex::kSlots;
}
inline constexpr EntryIndex kEntriesByIdentifier{
    [](std::size_t place) { return IdentifierSlot(kEntries[place].source); }};

// The row of an identifier of the source model, or of the meta file; null when there is none.
constexpr const EntryRow* FindEntryRow(std::uint32_t source) {
  std::size_t place = kEntriesByIdentifier.First(IdentifierSlot(source));
  while (place < kEntryCount && kEntries[place].source != source) {
    place = kEntriesByIdentifier.Next(place);
  }
  return place < kEntryCount ? kEntries + place : nullptr;
}
constexpr const EntryRow* FindCompiledEntryRow(std::uint32_t compiled) {
  return FindRow(
      kEntries, [&](const EntryRow& row) { return row.compiled != 0 && row.compiled == compiled; });
}

// The keyword of an entry that is known to exist.
constexpr std::string_view KeywordOf(EntryId entry) { return KeywordOf(*FindEntryRow(entry)); }

// The name that a symbol table has for a key of such an entry.
constexpr std::string_view NameInKey(const EntryRow& row, std::string_view key) {
  return key.substr(row.prefix.size());
}

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_ENTRIES_H_
