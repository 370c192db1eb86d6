#include "browse/limit.h"

#include <optional>
#include <string>

#include "compiled/datum.h"
#include "machine/machine.h"
#include "machine/value.h"
#include "ruxcomp/model/handles.h"

namespace rux::browse {

std::string Limit::Text() const {
  std::string text = Amount();
  if (quantity.is_signed) text += *quantity.is_signed ? " (signed)" : " (unsigned)";
  return text;
}

std::optional<Limit> LimitIn(const machine::Machine& machine, const ruxcomp::Section& section,
                             const ruxcomp::Entry& entry) {
  if (machine::LimitWith(entry.identifier()) == nullptr) return std::nullopt;
  const compiled::Datum datum = machine::DatumOf(entry.value());
  if (!datum.IsNumber()) return std::nullopt;
  return Limit{datum.number, machine.QuantityOf(section)};
}

}  // namespace rux::browse
