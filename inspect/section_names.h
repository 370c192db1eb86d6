// The names of the sections that entries refer to by their IDs.
#ifndef INSPECT_SECTION_NAMES_H_
#define INSPECT_SECTION_NAMES_H_

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "compiled/datum.h"
#include "compiled/debug_meta.h"
#include "compiled/meta.h"
#include "ruxcomp/language/sections.h"

namespace rux::inspect {

class SectionNames {
 public:
  // Of a decoded file, which must outlive this.
  explicit SectionNames(const compiled::CompiledMeta& meta);
  explicit SectionNames(const compiled::DebugMeta& meta);

  // The name of the first section of that kind with that ID. Empty when there is none, or no kind.
  std::string Of(const ruxcomp::language::SectionKind* kind, std::uint32_t id) const;

 private:
  using ById = std::map<std::uint32_t, std::string>;

  std::function<ById(const ruxcomp::language::SectionKind&)> list_;
  mutable std::map<std::uint32_t, ById> by_kind_;  // when first needed
};

// The values of compiled entries, with the names of the sections whose IDs they are.
class CompiledValues {
 public:
  // The file must outlive this.
  explicit CompiledValues(const compiled::CompiledMeta& meta) : meta_(meta), names_(meta) {}

  // In the order of the words.
  std::vector<compiled::Datum> Of(const compiled::CompiledSection& section,
                                  const compiled::CompiledEntry& entry) const;

 private:
  const compiled::CompiledMeta& meta_;
  const SectionNames names_;
};

}  // namespace rux::inspect

#endif  // INSPECT_SECTION_NAMES_H_
