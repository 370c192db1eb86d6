// What may be before the first line of a script.
#ifndef READER_BYTE_ORDER_MARK_H_
#define READER_BYTE_ORDER_MARK_H_

#include <string_view>

namespace ruxcomp::reader {

inline constexpr std::string_view kMark = "\xEF\xBB\xBF";

inline bool StartsWithMark(std::string_view text) { return text.substr(0, kMark.size()) == kMark; }

inline std::string_view WithoutMark(std::string_view text) {
  return StartsWithMark(text) ? text.substr(kMark.size()) : text;
}

}  // namespace ruxcomp::reader

#endif  // READER_BYTE_ORDER_MARK_H_
