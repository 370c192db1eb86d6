// A text that is handed on while it grows: what is written of a large file need not fit into
// memory.
#ifndef SUPPORT_TEXT_STREAM_H_
#define SUPPORT_TEXT_STREAM_H_

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace rux::support {

class TextStream {
 public:
  // take(text) gets the text piece by piece.
  using Take = std::function<void(std::string_view)>;
  explicit TextStream(Take take) : take_(std::move(take)) {}
  TextStream(const TextStream&) = delete;
  TextStream& operator=(const TextStream&) = delete;

  TextStream& operator+=(std::string_view text) {
    waiting_ += text;
    if (waiting_.size() >= kPiece) Flush();
    return *this;
  }
  TextStream& operator+=(char c) { return *this += std::string_view(&c, 1); }

  // To be called at the end: what is not handed on by then is lost.
  void Flush() {
    take_(waiting_);
    waiting_.clear();
  }

 private:
  static constexpr std::size_t kPiece = std::size_t{1} << 16;

  const Take take_;
  std::string waiting_;
};

// All that write(TextStream&) writes.
template <class Write>
std::string WrittenText(Write write) {
  std::string text;
  TextStream stream([&](std::string_view piece) { text += piece; });
  write(stream);
  stream.Flush();
  return text;
}

// The same, handed on to print(text), such as PrintOut.
template <class Write>
void Print(void (*print)(std::string_view text), Write write) {
  TextStream stream(print);
  write(stream);
  stream.Flush();
}

}  // namespace rux::support

#endif  // SUPPORT_TEXT_STREAM_H_
