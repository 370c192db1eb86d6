#include "compiled/fault.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace rux::compiled {

void Faults::Add(Fault fault) {
  ++count_;
  // Of several at one place, the first to be found stays the first.
  const auto place =
      std::upper_bound(list_.begin(), list_.end(), fault.offset,
                       [](std::size_t offset, const Fault& each) { return offset < each.offset; });
  list_.insert(place, std::move(fault));
  if (list_.size() > kMost) list_.pop_back();
}

std::string FaultText(const Fault& fault) {
  return fmt::format("offset 0x{:X}, {}, {}: {}", fault.offset, fault.record, fault.field,
                     fault.reason);
}

}  // namespace rux::compiled
