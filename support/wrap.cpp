#include "support/wrap.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "support/safe_text.h"

namespace rux::support {
namespace {

// Zero when the environment does not say.
std::size_t ColumnsOfEnvironment() {
  const char* text = std::getenv("COLUMNS");
  if (text == nullptr) return 0;
  const std::string_view digits = text;
  std::size_t columns = 0;
  const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), columns);
  return error == std::errc() && stop == digits.data() + digits.size() ? columns : 0;
}

// Zero when standard output is not a terminal, or one of unknown size.
std::size_t ColumnsOfTerminal() {
  struct winsize size = {};
  return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

// Lines that pieces of text are added to, each of which stays whole.
class Lines {
 public:
  Lines(std::size_t width, std::size_t column) : width_(width), indent_(column), column_(column) {}

  void Add(std::string_view piece) {
    const std::size_t columns = Columns(piece);
    if (!is_at_begin_ && column_ + 1 + columns > width_) {
      text_ += '\n';
      text_.append(indent_, ' ');
      column_ = indent_;
    } else if (!is_at_begin_) {
      text_ += ' ';
      ++column_;
    }
    text_ += piece;
    column_ += columns;
    is_at_begin_ = false;
  }

  const std::string& text() const { return text_; }

 private:
  const std::size_t width_;
  const std::size_t indent_;
  std::size_t column_;
  bool is_at_begin_ = true;
  std::string text_;
};

}  // namespace

std::size_t TextWidth() {
  constexpr std::size_t kDefault = 80;
  constexpr std::size_t kLeast = 20;
  std::size_t columns = ColumnsOfEnvironment();
  if (columns == 0) columns = ColumnsOfTerminal();
  return columns == 0 ? kDefault : std::max(columns, kLeast);
}

std::string Wrapped(std::string_view text, std::size_t width, std::size_t column) {
  Lines lines(width, column);
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    if (end > 0) lines.Add(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines.text();
}

std::string WrappedList(const std::vector<std::string>& items, std::size_t width,
                        std::size_t column) {
  Lines lines(width, column);
  for (std::size_t i = 0; i < items.size(); ++i) {
    lines.Add(i + 1 < items.size() ? items[i] + ',' : items[i]);
  }
  return lines.text();
}

}  // namespace rux::support
