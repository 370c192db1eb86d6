// Records as bytes, between two copies of one process. A record says what it holds once, for both
// directions: walk(wire, record) passes each member to the wire.
#ifndef ANALYSIS_WIRE_H_
#define ANALYSIS_WIRE_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace rux::analysis {

class WireWriter {
 public:
  const std::string& bytes() const { return bytes_; }

  template <class Number, std::enable_if_t<std::is_arithmetic_v<Number>, int> = 0>
  void operator()(Number& number) {
    bytes_.append(reinterpret_cast<const char*>(&number), sizeof number);
  }
  // As the others, or the one for records would be nearer.
  // cppcheck-suppress constParameter
  void operator()(std::string& text) {
    Count(text.size());
    bytes_ += text;
  }
  template <class Value>
  void operator()(std::vector<Value>& values) {
    Count(values.size());
    for (Value& value : values) (*this)(value);
  }
  template <class Value>
  void operator()(std::optional<Value>& value) {
    bool is_there = value.has_value();
    (*this)(is_there);
    if (is_there) (*this)(*value);
  }
  template <class Record, std::enable_if_t<std::is_class_v<Record>, int> = 0>
  void operator()(Record& record) {
    Walk(*this, record);
  }

 private:
  void Count(std::size_t count) { (*this)(count); }

  std::string bytes_;
};

// Throws std::runtime_error where the bytes end too early.
class WireReader {
 public:
  explicit WireReader(std::string_view bytes) : bytes_(bytes) {}

  template <class Number, std::enable_if_t<std::is_arithmetic_v<Number>, int> = 0>
  void operator()(Number& number) {
    std::memcpy(&number, Take(sizeof number).data(), sizeof number);
  }
  void operator()(std::string& text) { text = Take(Count()); }
  template <class Value>
  void operator()(std::vector<Value>& values) {
    for (std::size_t left = Count(); left > 0; --left) (*this)(values.emplace_back());
  }
  template <class Value>
  void operator()(std::optional<Value>& value) {
    bool is_there = false;
    (*this)(is_there);
    if (is_there) (*this)(value.emplace());
  }
  template <class Record, std::enable_if_t<std::is_class_v<Record>, int> = 0>
  void operator()(Record& record) {
    Walk(*this, record);
  }

 private:
  std::size_t Count() {
    std::size_t count = 0;
    (*this)(count);
    return count;
  }
  std::string_view Take(std::size_t size) {
    if (size > bytes_.size()) throw std::runtime_error("the answer is cut off");
    const std::string_view taken = bytes_.substr(0, size);
    bytes_.remove_prefix(size);
    return taken;
  }

  std::string_view bytes_;
};

template <class Record>
std::string ToBytes(Record record) {
  WireWriter wire;
  wire(record);
  return wire.bytes();
}

template <class Record>
Record FromBytes(std::string_view bytes) {
  Record record;
  WireReader wire(bytes);
  wire(record);
  return record;
}

}  // namespace rux::analysis

#endif  // ANALYSIS_WIRE_H_
