// A value of the read model; see model.h.
#ifndef RUXCOMP_MODEL_VALUE_H_
#define RUXCOMP_MODEL_VALUE_H_

#include <cstdint>
#include <string_view>

#include "ruxcomp/language/symbols.h"
#include "ruxcomp/records.h"

namespace ruxcomp {

// What a table index stands for: a number, a text, or nothing when the tables do not have it. Like
// gcGetValueByIndex, it does not distinguish the number 0xFFFFFFFF from nothing.
class Value {
 public:
  // A value that is not there, or an index that stands for nothing.
  constexpr Value() noexcept = default;
  constexpr explicit Value(std::uint32_t index) noexcept : index_(index) {}
  // An index that stands for that. The text is not copied; a zero byte must follow it.
  constexpr Value(std::uint32_t index, std::uint32_t number) noexcept
      : index_(index), number_(number) {}
  constexpr Value(std::uint32_t index, std::string_view text) noexcept
      : Value(index, static_cast<std::uint32_t>(text.size()), text.data()) {}
  // The text of this many bytes, or the number when `text` is null.
  constexpr Value(std::uint32_t index, std::uint32_t number, const char* text) noexcept
      : index_(index), number_(number), text_(text) {}

  constexpr tagTBLKIND kind() const noexcept {
    if (text_ != nullptr) return RUX_DATA_STRING;
    return number_ != kNone ? RUX_DATA_NUMBER : RUX_DATA_NONE;
  }
  constexpr explicit operator bool() const noexcept { return kind() != RUX_DATA_NONE; }

  // The index, as it is in the file; 0xFFFFFFFF for a value that is not there.
  constexpr std::uint32_t index() const noexcept { return index_; }

  // 0 unless kind() is RUX_DATA_NUMBER.
  constexpr std::uint32_t number() const noexcept {
    return kind() == RUX_DATA_NUMBER ? number_ : 0;
  }

  // The same as a number with a sign, 0 unless kind() is RUX_DATA_NUMBER. Files have no sign: a -20
  // of the script is 0xFFFFFFEC, and only a program that knows what the number means knows that it
  // is below 0. A -1 is 0xFFFFFFFF, which is indistinguishable from nothing.
  constexpr std::int32_t signed_number() const noexcept {
    return static_cast<std::int32_t>(number());
  }

  // Empty unless kind() is RUX_DATA_STRING. A zero byte follows it, so that data() is a C string.
  constexpr std::string_view text() const noexcept {
    return text_ != nullptr ? std::string_view(text_, number_) : std::string_view("");
  }

 private:
  static constexpr std::uint32_t kNone = language::kNoNumber;

  std::uint32_t index_ = language::kNoIndex;
  std::uint32_t number_ = kNone;  // of a text: its length
  const char* text_ = nullptr;
};

}  // namespace ruxcomp

#endif  // RUXCOMP_MODEL_VALUE_H_
