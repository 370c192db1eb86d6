// HTML as it is written: markup of the program's own, and texts of others, which mean nothing but
// themselves.
#ifndef PAGE_HTML_H_
#define PAGE_HTML_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace rux::page {

// Any bytes: what could be markup is escaped, what could not be shown is made safe.
struct Text {
  std::string_view bytes;
};

// The same with tabs kept, for lines of a script.
struct Line {
  std::string_view bytes;
};

class Html {
 public:
  // Markup comes only from literals, so no text can become markup.
  template <std::size_t kSize>
  Html& operator<<(const char (&markup)[kSize]) {
    markup_.append(markup, kSize - 1);
    return *this;
  }
  template <class Number, class = std::enable_if_t<std::is_integral_v<Number>>>
  Html& operator<<(Number number) {
    markup_ += std::to_string(number);
    return *this;
  }
  Html& operator<<(Text text);
  Html& operator<<(Line line);
  Html& operator<<(const Html& other) {
    markup_ += other.markup_;
    return *this;
  }

  // A file of the program's own, or what is known to be one of its words.
  Html& Trusted(std::string_view markup) {
    markup_ += markup;
    return *this;
  }

  void Reserve(std::size_t bytes) { markup_.reserve(bytes); }
  // The markup, which is none then.
  std::string Take() { return std::move(markup_); }

  bool is_empty() const { return markup_.empty(); }
  const std::string& markup() const { return markup_; }

 private:
  std::string markup_;
};

}  // namespace rux::page

#endif  // PAGE_HTML_H_
