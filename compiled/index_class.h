// What the words in a meta file stand for.
#ifndef COMPILED_INDEX_CLASS_H_
#define COMPILED_INDEX_CLASS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace rux::compiled {

constexpr std::uint32_t ClassOfIndex(std::uint32_t index) { return index & 0xFF000000; }
constexpr std::uint32_t OrdinalOfIndex(std::uint32_t index) { return index & 0x00FFFFFF; }

// "property", "number", "argument"; null for a word of no class.
const char* IndexClassName(std::uint32_t index);

struct Datum {
  enum class Class {
    kNumber,
    kString,
    kGroup,     // the name of a GROUP section, or "0" for the root
    kAction,    // the name of an ACTION section
    kTable,     // the name of a TABLE section
    kValue,     // the key of a value: VALUE, VALUE_INIT, ...
    kGlobal,    // the key of a global: G_...
    kName,      // the name of a property or a repeater
    kArgument,  // ARG and the number
    kOperator,  // of a calculation
    kType,      // the number is the type of a value
    kUnresolved,
  };

  Class is = Class::kUnresolved;
  std::uint32_t number = 0;
  std::string text;  // for all but numbers and types, as a script writes it
};

// An index whose class has no table: an argument, a type, an operator. None for any other.
std::optional<Datum> ImmediateDatum(std::uint32_t index);
// An index whose table has that text for it.
Datum TextDatum(std::uint32_t index, const std::string& text);
// An index into the table of numbers.
Datum NumberDatum(std::uint32_t number);

// The key of an entry as a script writes it in such a section. `name` is what the identifier stands
// for as an index; the key is empty when neither tells.
std::string KeyText(std::uint32_t section_identifier, std::uint32_t identifier, const Datum& name);

// What may stand in a table for an entry of that key: the key, and what follows one of the
// prefixes.
std::vector<std::string> NamesOfKey(const std::string& key);

}  // namespace rux::compiled

#endif  // COMPILED_INDEX_CLASS_H_
