// What is wrong with a compiled file.
#ifndef RUXCOMP_FILE_FAULT_H_
#define RUXCOMP_FILE_FAULT_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ruxcomp::file {

struct Fault {
  std::size_t offset = 0;  // of the field
  std::string record;      // "kind block 2, section 3, entry 5, payload", ordinals from 0
  std::string field;
  std::string reason;  // what is there and why it cannot be
};

// Of a file that cannot be read, which has no record.
inline Fault UnreadableFile(std::string reason) { return {0, "file", "path", std::move(reason)}; }
inline bool IsUnreadable(const Fault& fault) { return fault.field == "path"; }

// All faults are counted, the first ones are kept. Later ones may follow from earlier ones.
class Faults {
 public:
  void Add(Fault fault) {
    ++count_;
    // Of several at one place, the first to be found stays the first.
    const auto place = std::upper_bound(
        list_.begin(), list_.end(), fault.offset,
        [](std::size_t offset, const Fault& each) { return offset < each.offset; });
    list_.insert(place, std::move(fault));
    if (list_.size() > kMost) list_.pop_back();
  }

  // Whether a fault at that offset would be kept; one that would not needs no text.
  bool Keeps(std::size_t offset) const {
    return list_.size() < kMost || offset < list_.back().offset;
  }
  void AddUnkept() { ++count_; }

  // Whether the file ends where a field says that more follows, as when the end of it is missing.
  bool is_cut() const { return is_cut_; }
  void NoteCut() { is_cut_ = true; }

  bool empty() const { return count_ == 0; }
  std::size_t count() const { return count_; }
  // In the order of the file.
  const std::vector<Fault>& list() const { return list_; }

 private:
  static constexpr std::size_t kMost = 20;

  std::size_t count_ = 0;
  bool is_cut_ = false;
  std::vector<Fault> list_;
};

// A number or a text that a reason mentions.
class FaultArgument {
 public:
  // cppcheck-suppress noExplicitConstructor
  FaultArgument(std::uint64_t number) : number_(number) {}  // NOLINT(*-explicit-*)
  // cppcheck-suppress noExplicitConstructor
  FaultArgument(std::string_view text) : text_(text), is_text_(true) {}  // NOLINT(*-explicit-*)

  // `form` is empty, or ":X", ":02X", ":08X": hexadecimal, with so many digits at least.
  void AppendTo(std::string& text, std::string_view form) const {
    if (is_text_) {
      text += text_;
    } else if (form.empty()) {
      text += std::to_string(number_);
    } else {
      char digits[2 * sizeof number_ + 1];
      const int width = form.size() > 2 ? form[2] - '0' : 1;
      std::snprintf(digits, sizeof digits, "%0*llX", width,
                    static_cast<unsigned long long>(number_));
      text += digits;
    }
  }

 private:
  std::uint64_t number_ = 0;
  std::string_view text_;
  bool is_text_ = false;
};

// A reason: the format with an argument in each pair of braces. "{}" takes the next one, "{0}" the
// first; what follows a colon is the form of a number. The list comes by reference: by value, g++
// for 32-bit ARM notes at each use that it once passed such lists in another way.
inline std::string ReasonText(std::string_view format,
                              const std::initializer_list<FaultArgument>& arguments) {
  std::string text;
  for (const FaultArgument* next = arguments.begin();;) {
    const std::size_t open = format.find('{');
    text += format.substr(0, open);
    if (open == std::string_view::npos) return text;
    const std::size_t close = format.find('}', open);
    std::string_view form = format.substr(open + 1, close - open - 1);
    const bool is_numbered = !form.empty() && form.front() != ':';
    const FaultArgument* const argument =
        is_numbered ? arguments.begin() + (form.front() - '0') : next++;
    if (is_numbered) form.remove_prefix(1);
    argument->AppendTo(text, form);
    format.remove_prefix(close + 1);
  }
}

// "offset 0xF4, kind block 0, section 0, name: the length 255 (0xFF) is too large, bytes left: 12"
inline std::string FaultText(const Fault& fault) {
  return ReasonText("offset 0x{:X}, {}, {}: {}",
                    {fault.offset, std::string_view(fault.record), std::string_view(fault.field),
                     std::string_view(fault.reason)});
}

}  // namespace ruxcomp::file

#endif  // RUXCOMP_FILE_FAULT_H_
