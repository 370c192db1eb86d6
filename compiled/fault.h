// What is wrong with a compiled file.
#ifndef COMPILED_FAULT_H_
#define COMPILED_FAULT_H_

#include <cstddef>
#include <string>
#include <vector>

namespace rux::compiled {

struct Fault {
  std::size_t offset;  // of the field
  std::string record;  // "kind block 2, section 3, entry 5, payload", ordinals from 0
  std::string field;
  std::string reason;  // what stands there and why it cannot be
};

// All faults are counted, the first ones are kept. Later ones may follow from earlier ones.
class Faults {
 public:
  void Add(Fault fault);

  // Whether a fault at that offset would be kept; one that would not needs no text.
  bool Keeps(std::size_t offset) const {
    return list_.size() < kMost || offset < list_.back().offset;
  }
  void AddUnkept() { ++count_; }

  bool empty() const { return count_ == 0; }
  std::size_t count() const { return count_; }
  // In the order of the file.
  const std::vector<Fault>& list() const { return list_; }

 private:
  static constexpr std::size_t kMost = 20;

  std::size_t count_ = 0;
  std::vector<Fault> list_;
};

// "offset 0xF4, kind block 0, section 0, name: the length 255 (0xFF) is too large, bytes left: 12"
std::string FaultText(const Fault& fault);

}  // namespace rux::compiled

#endif  // COMPILED_FAULT_H_
