// What the check of an entry needs to know.
#ifndef FRONTEND_CHECK_CONTEXT_H_
#define FRONTEND_CHECK_CONTEXT_H_

#include <cstdint>

#include "findings/origin.h"

namespace ruxcomp::core {

class CRUXSection;
class ModelIndex;  // checker/model_index.h

struct CheckContext {
  // Implicit: the first pass needs no more than the section.
  // cppcheck-suppress noExplicitConstructor
  CheckContext(const CRUXSection& ofEntry, ModelIndex* ofModel = nullptr)  // NOLINT
      : section(ofEntry), index(ofModel) {}

  // The same for one part of the entry; notes that this part is being examined.
  CheckContext At(std::uint32_t ordinal) const {
    findings::ExaminePart(ordinal);
    CheckContext context = *this;
    context.part = ordinal;
    return context;
  }

  const CRUXSection& section;  // the one that the entry belongs to
  ModelIndex* index;           // of the model; the second pass has one, the first does not
  std::uint32_t part = findings::Origin::kNone;  // what messages are about
};

}  // namespace ruxcomp::core

#endif  // FRONTEND_CHECK_CONTEXT_H_
