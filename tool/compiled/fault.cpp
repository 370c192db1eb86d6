#include "tool/compiled/fault.h"

#include <fmt/format.h>

#include <utility>

namespace rux {

void Faults::Add(Fault fault) {
  if (!enough()) list_.push_back(std::move(fault));
}

std::string FaultText(const Fault& fault) {
  return fmt::format("offset 0x{:X}, {}, {}: {}", fault.offset, fault.record, fault.field,
                     fault.reason);
}

Failure DamageFailure(const std::string& path, const Faults& faults) {
  return Failure(ExitStatus::kTrouble,
                 "cannot load " + path + ": " + FaultText(faults.list().front()));
}

}  // namespace rux
