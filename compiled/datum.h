// What the words in a meta file stand for.
#ifndef COMPILED_DATUM_H_
#define COMPILED_DATUM_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/meta.h"
#include "ruxcomp/language/symbols.h"

namespace rux::compiled {

struct Datum {
  // The row of its class: a number, a string, the name of a group, ..., a type. Null for a word
  // that stands for nothing.
  const language::ClassRow* row = nullptr;
  std::uint32_t number = 0;
  std::string text;  // for all but numbers and types, as a script writes it
  // What readers of a file may know besides: how the script wrote a number or a type, and the name
  // of the section whose ID a number is.
  std::string written = {};
  std::string name = {};

  bool Is(std::uint32_t index_class) const { return row != nullptr && row->base == index_class; }
  // Neither a text nor nothing.
  bool IsNumber() const { return Is(language::CLASS_Dword) || Is(language::CLASS_ValueType); }
};

// An index whose class has no table: an argument, a type, an operator. None for any other.
std::optional<Datum> ImmediateDatum(std::uint32_t index);
// An index whose table has that text for it.
Datum TextDatum(std::uint32_t index, std::string_view text);
// An index into the table of numbers.
Datum NumberDatum(std::uint32_t number);

// The key of an entry as a script writes it in such a section. `name` is what the identifier stands
// for as an index; the key is empty when neither says.
std::string KeyText(std::uint32_t section_identifier, std::uint32_t identifier, const Datum& name);

// What may be in a table for an entry of that key: the key, and what follows one of the prefixes.
std::vector<std::string> NamesOfKey(const std::string& key);

// The table of that class of a decoded file; null when the file has none.
const CompiledTable* TableOf(const CompiledMeta& meta, std::uint32_t base);

// What an index stands for in it, with names as a script writes them.
Datum Resolve(const CompiledMeta& meta, std::uint32_t index);

// The key of an entry as a script writes it in such a section; empty when its identifier does not
// say.
std::string KeyOf(const CompiledMeta& meta, const CompiledSection& section,
                  const CompiledEntry& entry);

}  // namespace rux::compiled

#endif  // COMPILED_DATUM_H_
