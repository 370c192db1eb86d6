// What the words of a decoded meta file stand for.
#ifndef COMPILED_META_INDEX_H_
#define COMPILED_META_INDEX_H_

#include <cstdint>
#include <string>

#include "compiled/index_class.h"
#include "compiled/meta.h"

namespace rux::compiled {

// The table of that class; null when the file has none.
const CompiledTable* TableOf(const CompiledMeta& meta, std::uint32_t base);

// What an index stands for, with names as a script writes them.
Datum Resolve(const CompiledMeta& meta, std::uint32_t index);

// The key of an entry as a script writes it in such a section; empty when its identifier does not
// tell.
std::string KeyOf(const CompiledMeta& meta, const CompiledSection& section,
                  const CompiledEntry& entry);

}  // namespace rux::compiled

#endif  // COMPILED_META_INDEX_H_
