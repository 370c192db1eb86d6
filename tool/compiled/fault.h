// What is wrong with a compiled file.
#ifndef TOOL_COMPILED_FAULT_H_
#define TOOL_COMPILED_FAULT_H_

#include <cstddef>
#include <string>
#include <vector>

#include "tool/failure.h"

namespace rux {

struct Fault {
  std::size_t offset;  // of the field
  std::string record;  // "kind block 2, section 3, entry 5, payload", ordinals from 0
  std::string field;
  std::string reason;  // what stands there and why it cannot be
};

// The first faults of a file in the order of their discovery. Later ones may follow from earlier
// ones.
class Faults {
 public:
  // What is found when there are enough is dropped.
  void Add(Fault fault);

  bool empty() const { return list_.empty(); }
  // Looking for more is of no use.
  bool enough() const { return list_.size() >= kMost; }
  const std::vector<Fault>& list() const { return list_; }

 private:
  static constexpr std::size_t kMost = 20;

  std::vector<Fault> list_;
};

// "offset 0xF4, kind block 0, section 0, name: the length 255 (0xFF) is too large, bytes left: 12"
std::string FaultText(const Fault& fault);

// The end of a command that cannot use the file at `path` because of its first fault.
Failure DamageFailure(const std::string& path, const Faults& faults);

}  // namespace rux

#endif  // TOOL_COMPILED_FAULT_H_
