// The texts of the source model. All of them are views: the bytes are in an arena.
#ifndef FRONTEND_TEXT_H_
#define FRONTEND_TEXT_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ruxcomp/language/rows.h"

namespace ruxcomp::core {

// A text that has a zero after it.
class Text {
 public:
  constexpr Text() = default;  // empty
  // `data` has a zero after the text.
  constexpr Text(const char* data, std::size_t size)
      : data_(data), size_(static_cast<std::uint32_t>(size)) {}

  constexpr operator std::string_view() const { return {data_, size_}; }  // NOLINT: it is a text
  constexpr std::string_view view() const { return *this; }
  constexpr const char* c_str() const { return data_; }
  constexpr std::uint32_t size() const { return size_; }
  constexpr bool empty() const { return size_ == 0; }

  friend constexpr bool operator==(Text one, std::string_view other) { return one.view() == other; }
  friend constexpr bool operator!=(Text one, std::string_view other) { return one.view() != other; }

 private:
  const char* data_ = "";
  std::uint32_t size_ = 0;
};

// Texts side by side in an arena.
using TextList = ruxcomp::language::Rows<std::string_view>;

}  // namespace ruxcomp::core

#endif  // FRONTEND_TEXT_H_
