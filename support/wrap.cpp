#include "support/wrap.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/safe_text.h"

namespace rux::support {
namespace {

// Lines that pieces of text are added to, each of which stays whole.
class Lines {
 public:
  Lines(std::size_t width, std::size_t indent, std::size_t column)
      : width_(width), indent_(indent), column_(column) {}

  void Add(std::string_view piece) {
    const std::size_t columns = Columns(piece);
    if (!is_at_begin_ && width_ != kEndless && column_ + 1 + columns > width_) {
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

  void Add(const std::vector<std::string>& pieces) {
    for (const std::string& piece : pieces) Add(piece);
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

void AddToList(std::vector<std::string>& pieces, std::string text) {
  if (!pieces.empty()) pieces.back() += ',';
  pieces.push_back(std::move(text));
}

std::string Wrapped(std::string_view text, std::size_t width, std::size_t column) {
  Lines lines(width, column, column);
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    if (end > 0) lines.Add(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines.text();
}

std::string WrappedPieces(const std::vector<std::string>& pieces, std::size_t width,
                          std::size_t column) {
  Lines lines(width, column, column);
  lines.Add(pieces);
  return lines.text();
}

std::string WrappedLine(const std::vector<std::string>& pieces, std::size_t width,
                        std::size_t indent) {
  Lines lines(width, indent, 0);
  lines.Add(pieces);
  return lines.text();
}

std::string InColumns(const std::vector<std::string>& texts, const std::vector<std::string>& shown,
                      std::size_t width) {
  constexpr std::size_t kGap = 3;
  std::string lines;
  if (width == kEndless) {
    for (const std::string& text : shown) lines.append(text).append("\n");
    return lines;
  }
  std::size_t widest = 0;
  for (const std::string& text : texts) widest = std::max(widest, Columns(text));
  const std::size_t columns = std::max<std::size_t>(1, (width + kGap) / (widest + kGap));
  const std::size_t rows = (texts.size() + columns - 1) / columns;
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t i = row; i < texts.size(); i += rows) {
      lines += shown[i];
      if (i + rows < texts.size()) lines.append(widest - Columns(texts[i]) + kGap, ' ');
    }
    lines += '\n';
  }
  return lines;
}

}  // namespace rux::support
