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

// The faults of one file in the order of their discovery: the first few, and how many there are in
// all. Later ones may follow from earlier ones.
class Faults {
 public:
  void Add(Fault fault);

  bool empty() const { return count_ == 0; }
  std::size_t count() const { return count_; }
  const std::vector<Fault>& first() const { return first_; }

 private:
  std::vector<Fault> first_;
  std::size_t count_ = 0;
};

// "offset 0xF4, kind block 0, section 0, name: the length 255 (0xFF) is too large: 12 bytes are
// left"
std::string FaultText(const Fault& fault);

// The end of a command that cannot use the file at `path` because of its first fault.
Failure DamageFailure(const std::string& path, const Faults& faults);

}  // namespace rux

#endif  // TOOL_COMPILED_FAULT_H_
