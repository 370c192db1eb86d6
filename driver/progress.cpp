#include "driver/progress.h"

#include <fmt/format.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "support/safe_text.h"
#include "support/utf8.h"

namespace rux::driver {
namespace {

constexpr std::chrono::milliseconds kFirst{1000};
constexpr std::chrono::milliseconds kInterval{100};

// To the beginning of the line, and nothing in it.
constexpr std::string_view kErase = "\r\x1B[K";

std::string Clipped(const std::string& text, std::size_t most) {
  std::size_t end = 0;
  for (std::size_t columns = 0; end < text.size();) {
    const support::Character next = support::FirstCharacter(std::string_view(text).substr(end));
    columns += support::Columns(next);
    if (columns > most) break;
    end += next.bytes.size();
  }
  return text.substr(0, end);
}

}  // namespace

Progress::Progress(std::size_t total, std::size_t columns, Clock now, Print print)
    : total_(total),
      columns_(columns),
      now_(std::move(now)),
      print_(std::move(print)),
      next_(now_() + kFirst) {}

void Progress::Show(std::size_t done, const std::string& script) {
  if (columns_ < 2 || done == total_ || now_() < next_) return;
  next_ = now_() + kInterval;
  const std::string text = fmt::format("[{}/{}] {}", done, total_, support::SafeText(script));
  print_(std::string(kErase) + Clipped(text, columns_ - 1));
  is_shown_ = true;
}

void Progress::Erase() {
  if (!is_shown_) return;
  print_(kErase);
  is_shown_ = false;
}

}  // namespace rux::driver
